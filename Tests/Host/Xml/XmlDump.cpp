#include "Host/Xml/XmlDump.h"

#include <sstream>

namespace kiv::xml::test {

namespace {

std::string sQuoted(std::string_view text) {
    std::string quoted = "'";
    for (const char c : text) {
        if (c == '\n')
            quoted += "\\n";
        else if (c == '\r')
            quoted += "\\r";
        else if (c == '\t')
            quoted += "\\t";
        else
            quoted += c;
    }
    return quoted + "'";
}

std::string sAttributes(const const_NamedNodeMap& attributes) {
    std::string dump;
    for (std::uint64_t i = 0; i != attributes.LengthGet(); ++i) {
        const const_Node attribute = attributes.ItemGet(i);
        dump.append(i == 0 ? "" : " ").append(attribute.getNodeName()).append("=");
        dump.append(sQuoted(attribute.getNodeValue()));
    }
    return dump.empty() ? "" : "[" + dump + "]";
}

std::string sChildren(const const_Node& node) {
    std::string dump;
    for (auto child = node.FirstChildGet(); child; child = child->NextSiblingGet())
        dump.append(dump.empty() ? "" : " ").append(sDump(*child));
    return dump.empty() ? "" : "(" + dump + ")";
}

} // namespace

std::string sDump(const const_Node& node) {
    if (node.boNodeNameIs("#text"))
        return sQuoted(node.getNodeValue());
    const auto attributes = node.AttributesGet();
    return node.getNodeName() + (attributes ? sAttributes(*attributes) : "") + sChildren(node);
}

std::string sDumpRead(std::string_view text) {
    std::istringstream stream{std::string(text)};
    File file(nullptr, VerboseLevel::Quiet, ValidateLevel::None);
    if (const auto root = file.parse(stream, "", nullptr))
        return sDump(*root);
    return "! " + file.pError()->reason;
}

std::string sWritten(const const_Node& node, WriteStyle style) {
    std::ostringstream stream;
    node.vWrite(stream, style);
    return stream.str();
}

} // namespace kiv::xml::test
