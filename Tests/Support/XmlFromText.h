/// XML documents for tests, from text in the test itself, and elements as text.
///
///     const XmlFromText document("<Set><Name>A</Name></Set>");
///     EXPECT_EQ(document.root().tagName(), "Set");
///
///     XmlTarget target("Set");
///     target.root().ElementNodeAppend("Name");
///     EXPECT_EQ(target.sText(), "<Set><Name/></Set>");
///
/// Errors: a text that is not XML is std::logic_error, which fails the test.
#pragma once

#include "kiv/Host/Xml/KivXml.h"

#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace kiv::test {

/// The node with all below it, nothing added.
inline std::string sXmlText(const kiv::xml::const_Node& node) {
    std::ostringstream stream;
    node.vWrite(stream, kiv::xml::WriteStyle::Compact);
    return stream.str();
}

/// A document that was read. It owns its nodes.
class XmlFromText {
public:
    explicit XmlFromText(std::string_view text) :
        file_(nullptr, kiv::xml::VerboseLevel::Quiet, kiv::xml::ValidateLevel::None),
        root_(parse(file_, text)) {}

    const kiv::xml::Element& root() const { return root_; }

private:
    static kiv::xml::Element parse(kiv::xml::File& file, std::string_view text) {
        std::istringstream stream{std::string(text)};
        const auto root = file.parse(stream, "test", nullptr);
        if (!root)
            throw std::logic_error("no XML: " + file.pError()->reason);
        return *root;
    }

    kiv::xml::File file_;
    kiv::xml::Element root_;
};

/// A document that is written into. It owns its nodes.
class XmlTarget {
public:
    explicit XmlTarget(std::string_view rootTag) : root_(document_.getNode().ElementNodeAppend(rootTag)) {}

    kiv::xml::Element& root() { return root_; }

    /// The root element as text.
    std::string sText() const { return sXmlText(root_); }

private:
    kiv::xml::Document document_;
    kiv::xml::Element root_;
};

} // namespace kiv::test
