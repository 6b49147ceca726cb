/// An XML file as libxml2, a reader of other hands than the writer's, understands it.
#pragma once

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/tree.h>

#include <charconv>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace kesto::test {

/// A number as XML Schema's type double has it, whatever the locale.
inline double SchemaNumber(const std::string& text) {
    if (text == "INF") return std::numeric_limits<double>::infinity();
    double number = std::numeric_limits<double>::quiet_NaN();
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    EXPECT_TRUE(error == std::errc() && end == text.data() + text.size()) << text;
    return number;
}

struct XmlNode {
    std::string name, text;
    std::map<std::string, std::string> attributes;
    std::vector<XmlNode> children;

    double Number(const std::string& attribute) const { return SchemaNumber(attributes.at(attribute)); }

    /// The two numbers of the text.
    std::pair<double, double> Pair() const {
        const auto blank = text.find(' ');
        EXPECT_NE(blank, std::string::npos) << name << ": " << text;
        return {SchemaNumber(text.substr(0, blank)), SchemaNumber(text.substr(blank + 1))};
    }

    std::vector<XmlNode> All(const std::string& wanted) const {
        std::vector<XmlNode> found;
        for (const XmlNode& child : children) {
            if (child.name == wanted) found.push_back(child);
        }
        return found;
    }

    /// The only child of a name; an empty node where there is none or another one.
    XmlNode Only(const std::string& wanted) const {
        const std::vector<XmlNode> found = All(wanted);
        EXPECT_EQ(found.size(), 1U) << wanted << " in " << name;
        return found.size() == 1 ? found[0] : XmlNode{};
    }
};

inline XmlNode Convert(const xmlNode* node) {
    const auto owned = [](xmlChar* text) {
        const std::unique_ptr<xmlChar, void (*)(void*)> owner(text, [](void* it) { xmlFree(it); });
        return std::string(text == nullptr ? "" : reinterpret_cast<const char*>(text));
    };
    XmlNode converted;
    converted.name = reinterpret_cast<const char*>(node->name);
    for (const xmlAttr* it = node->properties; it != nullptr; it = it->next) {
        converted.attributes[reinterpret_cast<const char*>(it->name)] =
            owned(xmlNodeListGetString(node->doc, it->children, 1));
    }
    for (const xmlNode* it = node->children; it != nullptr; it = it->next) {
        if (it->type == XML_ELEMENT_NODE) converted.children.push_back(Convert(it));
        if (it->type == XML_TEXT_NODE) converted.text += owned(xmlNodeGetContent(it));
    }
    return converted;
}

/// The outermost element of a file; empty, with a failure of the test, where the file is no XML.
inline XmlNode ReadXml(const std::string& path) {
    const std::unique_ptr<xmlDoc, void (*)(xmlDoc*)> document(xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET),
                                                              xmlFreeDoc);
    EXPECT_NE(document, nullptr) << path;
    return document ? Convert(xmlDocGetRootElement(document.get())) : XmlNode{};
}

}  // namespace kesto::test
