#include "Format/Ifc/Def/Schema/IfcSchemaWhere.h"

#include "Format/Ifc/Def/Schema/IfcSchemaAssert.h"
#include "Host/Assert/KivAssert.h"

#include <istream>

namespace kiv::ifc::def::schema {

Where::Where(Schema&, ReadLineHelper& line, std::size_t, std::istream& stream) {
    bool open = false;
    while (line.boNextLine(stream)) {
        const std::string_view text = line.getLine();
        open = open || text.find(':') != std::string_view::npos;
        if (open) {
            lines_.vLineAdd(text);
            open = text.find(';') == std::string_view::npos;
        }
        if (text.find("END_") != std::string_view::npos)
            break;
    }
    lines_.vFit();
}

void Where::parseRules(Schema& schema) {
    try {
        vRulesParse(schema);
    } catch (const ExpressParser::SyntaxError& error) {
        if (!assert::Assert::isEnabled())
            return;
        const auto message = std::string("Got SyntaxError when parsing an express rule: ") + error.what() +
                             "\n\nRule: " + lines_.getText();
        vAssertReport(message, "kiv::ifc::def::schema::Where::parseRules",
                      "Source/Format/Ifc/Def/Schema/IfcSchemaWhere", 0);
    }
}

void Where::vRulesParse(const Schema& schema) {
    ExpressTokenizer tokenizer(std::string_view(lines_.getText()));
    ExpressParser parser(tokenizer, schema);
    const auto before = rules_.size();
    while (parser.boParseRule(rules_)) {
    }
    if (rules_.size() == before)
        parser.vFail("Expected at least one rule in where clause");
}

} // namespace kiv::ifc::def::schema
