#include "exchange/xml_tree.hpp"

#include <cmath>
#include <memory>

#include "io/number_text.hpp"

namespace kesto {

namespace {

inline constexpr int pointDecimals = 6;
inline constexpr const char* infinite = "INF";  // as XML Schema spells it

/// Appends a node to another one, which owns it from then on. @return the node
template <class Node>
Node* Append(TiXmlNode& parent, std::unique_ptr<Node> node) {
    Node* const appended = node.release();
    parent.LinkEndChild(appended);  // allocates nothing
    return appended;
}

}  // namespace

XmlElement::XmlElement(TiXmlNode& parent, const char* name, bool& allUsable)
    : element(Append(parent, std::make_unique<TiXmlElement>(name))), usable(&allUsable) {}

XmlElement XmlElement::Child(const char* name) const { return {*element, name, *usable}; }

const XmlElement& XmlElement::Set(const char* name, const char* value) const {
    element->SetAttribute(name, value);
    return *this;
}

const XmlElement& XmlElement::Set(const char* name, double value) const {
    // TinyXML's own setter for doubles prints with "%g" in the process locale, where the decimal point may be a comma.
    return Set(name, ShortReal(Usable(value)).c_str());
}

const XmlElement& XmlElement::SetUnbounded(const char* name, double value) const {
    if (std::isinf(value) && value > 0) return Set(name, infinite);
    return Set(name, value);
}

const XmlElement& XmlElement::Numbers(double first, double second) const {
    const std::string text = FixedReal(Usable(first), pointDecimals) + ' ' + FixedReal(Usable(second), pointDecimals);
    Append(*element, std::make_unique<TiXmlText>(text.c_str()));
    return *this;
}

double XmlElement::Usable(double number) const noexcept {
    if (std::isfinite(number)) return number;
    *usable = false;
    return 0;
}

std::string XmlTree::Text() const {
    TiXmlPrinter printer;
    document.Accept(&printer);
    return printer.Str();
}

}  // namespace kesto
