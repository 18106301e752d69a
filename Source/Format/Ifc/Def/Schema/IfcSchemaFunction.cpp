#include "kiv/Format/Ifc/Def/Schema/IfcSchemaFunction.h"

#include "Format/Ifc/Def/Schema/IfcSchemaKeyword.h"

#include <istream>
#include <string_view>
#include <vector>

namespace kiv::ifc::def::schema {

BodyObject::BodyObject(ObjectBase::Type kind, ReadLineHelper& line, std::size_t namePos,
                       std::size_t nameEnd) :
    ObjectBase(kind, line, namePos, nameEnd) {}

BodyObject::BodyObject(ObjectBase::Type kind, ReadLineHelper& line, std::size_t namePos,
                       std::string_view endMarker, std::istream& stream) :
    BodyObject(kind, line, namePos, std::size_t{}) {
    const Keyword end(endMarker, std::string_view("END").size());
    auto& body = line.getEmptyLines();
    while (line.boNextLine(stream)) {
        if (end.isIn(line.getLine()))
            break;
        line.vLineAddTo(body);
    }
    body_ = line.getKept(body);
}

BodyObject::~BodyObject() = default;

std::vector<std::string_view> BodyObject::getBodyLines() const {
    auto lines = linesOfText(body_);
    std::erase_if(lines, [](std::string_view line) { return line.empty(); });
    return lines;
}

Function::Function(Schema&, ReadLineHelper& line, std::size_t keywordPos, std::istream& stream) :
    BodyObject(ObjectBase::Type::Function, line, keywordPos + std::string_view("FUNCTION").size(),
               "END_FUNCTION", stream) {}

Function::~Function() = default;

Rule::Rule(Schema&, ReadLineHelper& line, std::size_t keywordPos, std::istream& stream) :
    BodyObject(ObjectBase::Type::Rule, line, keywordPos + std::string_view("RULE").size(), "END_RULE",
               stream) {}

Rule::~Rule() = default;

} // namespace kiv::ifc::def::schema
