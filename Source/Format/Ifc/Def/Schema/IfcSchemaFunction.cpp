#include "Format/Ifc/Def/Schema/IfcSchemaFunction.h"

#include <istream>

namespace kiv::ifc::def::schema {

namespace {

TextLines readBody(ReadLineHelper& line, std::istream& stream, std::string_view endMarker) {
    TextLines body;
    while (line.boNextLine(stream)) {
        if (line.getLine().empty())
            continue;
        if (line.getLine().find(endMarker) != std::string::npos)
            break;
        body.vLineAdd(line.getLine());
    }
    body.vFit();
    return body;
}

} // namespace

// The base is initialised first and reads the name; the body follows it in the stream.
Function::Function(Schema&, ReadLineHelper& line, std::size_t keywordPos, std::istream& stream) :
    Function(line, keywordPos + std::string_view("FUNCTION").size(), std::size_t{}, stream) {}

Function::Function(ReadLineHelper& line, std::size_t namePos, std::size_t nameEnd, std::istream& stream) :
    ObjectBase(ObjectBase::Type::Function, line, namePos, nameEnd),
    body_(readBody(line, stream, "END_FUNCTION")) {}

Function::~Function() = default;

Rule::Rule(Schema&, ReadLineHelper& line, std::size_t keywordPos, std::istream& stream) :
    Rule(line, keywordPos + std::string_view("RULE").size(), std::size_t{}, stream) {}

Rule::Rule(ReadLineHelper& line, std::size_t namePos, std::size_t nameEnd, std::istream& stream) :
    ObjectBase(ObjectBase::Type::Rule, line, namePos, nameEnd), body_(readBody(line, stream, "END_RULE")) {}

Rule::~Rule() = default;

} // namespace kiv::ifc::def::schema
