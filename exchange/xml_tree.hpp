/// An XML document under construction: TinyXML's tree, and numbers as XML Schema's type double has them.
#pragma once

#include <tinyxml.h>

#include <string>

namespace kesto {

/// An element of an XmlTree, which owns it. Every call returns the element again where it has nothing else to return.
class XmlElement {
public:
    /// Appends a child element.
    XmlElement Child(const char* name) const;

    const XmlElement& Set(const char* name, const char* value) const;
    /// Sets an attribute to a number with six significant digits.
    const XmlElement& Set(const char* name, double value) const;
    /// The same where infinity has a meaning, as a straight's radius: "INF" for +infinity.
    const XmlElement& SetUnbounded(const char* name, double value) const;
    /// Sets the text to two numbers with six decimals, one blank between them.
    const XmlElement& Numbers(double first, double second) const;

    /// Whether every number written to the whole tree so far was one that a reader can use: finite, or +infinity in an
    /// attribute set unbounded. Others are written as 0.
    bool AllUsable() const noexcept { return *usable; }

private:
    friend class XmlTree;
    XmlElement(TiXmlNode& parent, const char* name, bool& allUsable);

    double Usable(double number) const noexcept;

    TiXmlElement* element;
    bool* usable;
};

/// An XML document. It holds no text of the user's, so its bytes are ASCII whatever the code page.
class XmlTree {
public:
    /// @param rootName the document's outermost element
    explicit XmlTree(const char* rootName) : root(document, rootName, usable) {}
    XmlTree(const XmlTree&) = delete;
    XmlTree& operator=(const XmlTree&) = delete;
    ~XmlTree() = default;

    const XmlElement& Root() const noexcept { return root; }
    /// The document as text, indented.
    std::string Text() const;

private:
    TiXmlDocument document;
    bool usable = true;
    XmlElement root;
};

}  // namespace kesto
