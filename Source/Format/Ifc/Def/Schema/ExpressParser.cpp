#include "kiv/Format/Ifc/Def/Schema/ExpressParser.h"

#include "Base/Arena.h"
#include "Base/Metered.h"
#include "Base/ScratchList.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "Format/Ifc/Def/Schema/IfcSchemaBuilder.h"
#include "Format/Ifc/Def/Schema/IfcSchemaLimits.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>

namespace kiv::ifc::def::schema {

namespace {

using Kind = ExpressTokenKind;

/// What a token is between two operands.
struct OperatorOfToken {
    enum class Level : std::uint8_t { None, Relational, Addition, Multiplication, Power };

    Level level = Level::None;
    BinaryOperator op{};
};
using Level = OperatorOfToken::Level;

constexpr auto Operators = [] {
    std::array<OperatorOfToken, static_cast<std::size_t>(Kind::END_OF_FILE) + 1> operators{};
    const auto set = [&operators](Level level, Kind token, BinaryOperator op) {
        operators[static_cast<std::size_t>(token)] = {level, op};
    };
    set(Level::Relational, Kind::LESS, BinaryOperator::Less);
    set(Level::Relational, Kind::GREATER, BinaryOperator::Greater);
    set(Level::Relational, Kind::LESS_OR_EQUAL, BinaryOperator::LessOrEqual);
    set(Level::Relational, Kind::GREATER_OR_EQUAL, BinaryOperator::GreaterOrEqual);
    set(Level::Relational, Kind::NOT_EQUAL, BinaryOperator::NotEqual);
    set(Level::Relational, Kind::EQUAL, BinaryOperator::Equal);
    set(Level::Relational, Kind::SEMI_NOT_EQUAL, BinaryOperator::InstanceNotEqual);
    set(Level::Relational, Kind::SEMI_EQUAL, BinaryOperator::InstanceEqual);
    set(Level::Relational, Kind::IN, BinaryOperator::In);
    set(Level::Addition, Kind::ADD, BinaryOperator::Add);
    set(Level::Addition, Kind::SUBTRACT, BinaryOperator::Subtract);
    set(Level::Addition, Kind::OR, BinaryOperator::Or);
    set(Level::Addition, Kind::XOR, BinaryOperator::Xor);
    set(Level::Multiplication, Kind::ASTERISK, BinaryOperator::Multiply);
    set(Level::Multiplication, Kind::SLASH, BinaryOperator::Divide);
    set(Level::Multiplication, Kind::MOD, BinaryOperator::Mod);
    set(Level::Multiplication, Kind::AND, BinaryOperator::And);
    set(Level::Multiplication, Kind::OR_SIGN, BinaryOperator::Or);
    set(Level::Power, Kind::POWER, BinaryOperator::Power);
    return operators;
}();

/// True when what was read is a whole simple expression before this token.
bool isSimpleExpressionEnd(Kind token) {
    const auto level = Operators[static_cast<std::size_t>(token)].level;
    return level == Level::None || level == Level::Relational;
}

/// The operator of this level that the token is; null when it is none.
const OperatorOfToken* pOperatorOf(Kind token, Level level) {
    const auto& entry = Operators[static_cast<std::size_t>(token)];
    return entry.level == level ? &entry : nullptr;
}

/// The arguments of a call or the elements of an aggregate while they are read; few have more than four.
using ExpressionCollector = ScratchList<ExpressionPtr, 4>;

} // namespace

ExpressParser::SyntaxError::SyntaxError(std::string message) : message_(std::move(message)) {}
ExpressParser::SyntaxError::SyntaxError(const SyntaxError& other) = default;
ExpressParser::SyntaxError& ExpressParser::SyntaxError::operator=(const SyntaxError& other) = default;
ExpressParser::SyntaxError::~SyntaxError() = default;
const char* ExpressParser::SyntaxError::what() const noexcept {
    return message_.c_str();
}

/// Counts how deep the expression nests while it lives.
class ExpressParser::NestingGuard {
public:
    explicit NestingGuard(ExpressParser& parser) : nesting_(parser.nesting_) {
        if (nesting_ > ExpressionNestingMax)
            parser.vFail(std::string(textOf(SyntaxMessage::UnexpectedToken)));
        ++nesting_;
    }
    ~NestingGuard() { --nesting_; }
    NestingGuard(const NestingGuard&) = delete;
    NestingGuard& operator=(const NestingGuard&) = delete;

private:
    std::size_t& nesting_;
};

ExpressParser::ExpressParser(ExpressTokenizer& tokenizer, const Schema& schema) :
    ExpressParser(tokenizer, schema, nullptr) {}

ExpressParser::ExpressParser(ExpressTokenizer& tokenizer, const Schema& schema, Arena& arena) :
    ExpressParser(tokenizer, schema, &arena) {}

ExpressParser::ExpressParser(ExpressTokenizer& tokenizer, const Schema& schema, Arena* arena) :
    tokenizer_(tokenizer), schema_(schema), arena_(arena), meter_(SchemaBuilder::pMeter(schema)) {
    vNext();
}

template <class Node, class... Arguments>
ExpressionPtr ExpressParser::pMake(Arguments&&... arguments) {
    if (meter_) [[unlikely]] {
        meter_->vTake(WorkMeter::Unit::RuleNodes, 1);
        meter_->vLook();
    }
    if (arena_)
        return ExpressionPtr(std::construct_at(static_cast<Node*>(arena_->pAllocateFor<Node>(1)),
                                               std::forward<Arguments>(arguments)..., arena_));
    return ExpressionPtr(std::make_unique<Node>(std::forward<Arguments>(arguments)..., nullptr).release());
}

void ExpressParser::vFail(const std::string& message) const {
    throw SyntaxError(message + " at " + std::to_string(current_.line) + ":" +
                      std::to_string(current_.column));
}

bool ExpressParser::boAccept(Kind kind) {
    if (!isNext(kind))
        return false;
    vNext();
    return true;
}

/// The text of the token, which must be of this kind.
std::string_view ExpressParser::expect(Kind kind) {
    const auto got = current_.kind;
    const auto text = current_.text;
    vNext();
    if (got != kind)
        vFail(std::string(textOf(SyntaxMessage::OtherTokenExpected)) + sTokenKindName(kind) + " but got " +
              sTokenKindName(got));
    return text;
}

bool ExpressParser::isNextSchemaObject() const {
    return schema_.pObjectFromName(current_.text) != nullptr;
}

// rule = IDENTIFIER ":" expression ";"
std::optional<ParsedRule> ExpressParser::parseRule() {
    if (!isNext(Kind::IDENTIFIER))
        return std::nullopt;
    const auto label = expect(Kind::IDENTIFIER);
    expect(Kind::COLON);
    auto expression = parseExpression();
    expect(Kind::SEMICOLON);
    return ParsedRule{ExpressionText(label, arena_), std::move(expression)};
}

bool ExpressParser::boParseRule(std::vector<ParsedRule>& rules) {
    auto rule = parseRule();
    if (rule)
        rules.push_back(std::move(*rule));
    return rule.has_value();
}

// expression = simple_expression [ relational_operator simple_expression ]
// relational_operator = "<" | ">" | "<=" | ">=" | "<>" | "=" | ":<>:" | ":=:" | "IN"
ExpressionPtr ExpressParser::parseExpression() {
    auto left = parseSimpleExpression();
    const auto* const relational = pOperatorOf(current_.kind, Level::Relational);
    if (!relational)
        return left;
    vNext();
    return pMake<BinaryExpression>(std::move(left), relational->op, parseSimpleExpression());
}

// simple_expression = term { ( "+" | "-" | "OR" | "XOR" ) term }
ExpressionPtr ExpressParser::parseSimpleExpression() {
    auto left = parseSimpleFactor();
    // Most expressions are a simple factor and nothing else.
    if (isSimpleExpressionEnd(current_.kind))
        return left;
    left = parseTermRest(std::move(left));
    while (const auto* const addition = pOperatorOf(current_.kind, Level::Addition)) {
        vNext();
        left = pMake<BinaryExpression>(std::move(left), addition->op, parseTermRest(parseSimpleFactor()));
    }
    return left;
}

// term = factor { ( "*" | "/" | "MOD" | "AND" | "||" ) factor }
// Its first simple factor is read already, as is that of a factor below.
ExpressionPtr ExpressParser::parseTermRest(ExpressionPtr first) {
    auto left = parseFactorRest(std::move(first));
    while (const auto* const multiplication = pOperatorOf(current_.kind, Level::Multiplication)) {
        vNext();
        left = pMake<BinaryExpression>(std::move(left), multiplication->op,
                                       parseFactorRest(parseSimpleFactor()));
    }
    return left;
}

// factor = simple_factor [ "**" simple_factor ]
ExpressionPtr ExpressParser::parseFactorRest(ExpressionPtr base) {
    const auto* const power = pOperatorOf(current_.kind, Level::Power);
    if (!power)
        return base;
    vNext();
    return pMake<BinaryExpression>(std::move(base), power->op, parseSimpleFactor());
}

// simple_factor = aggregate_initializer | schema_object | interval | query | "(" expression ")"
//               | ( "+" | "-" | "NOT" ) simple_factor | literal | primary
ExpressionPtr ExpressParser::parseSimpleFactor() {
    const NestingGuard guard(*this);
    switch (current_.kind) {
    case Kind::IDENTIFIER:
        return isNextSchemaObject() ? parseSchemaObject() : parsePrimary();
    case Kind::LEFT_BRACKET:
        vNext();
        return parseAggregateInitializer();
    case Kind::LEFT_BRACE:
        vNext();
        return parseInterval();
    case Kind::QUERY:
        vNext();
        return parseQuery();
    case Kind::LEFT_PAREN:
        vNext();
        return parseParenthesised();
    case Kind::ADD:
        vNext();
        return parseUnary(UnaryOperator::Plus);
    case Kind::SUBTRACT:
        vNext();
        return parseUnary(UnaryOperator::Minus);
    case Kind::NOT:
        vNext();
        return parseUnary(UnaryOperator::Not);
    default:
        break;
    }
    if (auto literal = pParseLiteral())
        return literal;
    return parsePrimary();
    // The analyzer takes nodes that the deleter of their pointers deletes for lost.
} // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks)

// aggregate_initializer = "[" [ element { "," element } ] "]"
ExpressionPtr ExpressParser::parseAggregateInitializer() {
    ExpressionCollector nodes(meter_);
    if (!boAccept(Kind::RIGHT_BRACKET)) {
        do {
            nodes.add(parseElement());
        } while (boAccept(Kind::COMMA));
        expect(Kind::RIGHT_BRACKET);
    }
    return pMake<AggregateInitializerExpression>(nodes.getValues());
}

// element = expression [ ":" simple_expression ]
ExpressionPtr ExpressParser::parseElement() {
    auto element = parseExpression();
    if (!boAccept(Kind::COLON))
        return element;
    return pMake<RepetitionExpression>(std::move(element), parseSimpleExpression());
}

// schema_object = IDENTIFIER arguments | IDENTIFIER "." IDENTIFIER, where the first names an object of the
// schema
ExpressionPtr ExpressParser::parseSchemaObject() {
    const auto name = expect(Kind::IDENTIFIER);
    if (isNext(Kind::LEFT_PAREN))
        return parseCall(name);
    expect(Kind::DOT);
    return pMake<EnumerationValueExpression>(name, expect(Kind::IDENTIFIER));
}

// arguments = "(" [ expression { "," expression } ] ")"
ExpressionPtr ExpressParser::parseCall(std::string_view name) {
    expect(Kind::LEFT_PAREN);
    ExpressionCollector nodes(meter_);
    if (!boAccept(Kind::RIGHT_PAREN)) {
        do {
            nodes.add(parseExpression());
        } while (boAccept(Kind::COMMA));
        expect(Kind::RIGHT_PAREN);
    }
    return pMake<FunctionCallExpression>(name, nodes.getValues());
}

// interval = "{" simple_expression interval_operator simple_expression interval_operator simple_expression
// "}"
ExpressionPtr ExpressParser::parseInterval() {
    auto low = parseSimpleExpression();
    const auto lowOperator = parseIntervalOperator();
    auto item = parseSimpleExpression();
    const auto highOperator = parseIntervalOperator();
    auto high = parseSimpleExpression();
    expect(Kind::RIGHT_BRACE);
    return pMake<IntervalExpression>(std::move(low), lowOperator, std::move(item), highOperator,
                                     std::move(high));
}

// interval_operator = "<" | "<="
IntervalOperator ExpressParser::parseIntervalOperator() {
    if (boAccept(Kind::LESS))
        return IntervalOperator::Less;
    if (boAccept(Kind::LESS_OR_EQUAL))
        return IntervalOperator::LessOrEqual;
    vFail(std::string(textOf(SyntaxMessage::IntervalOperatorExpected)));
}

// query = "QUERY" "(" IDENTIFIER "<*" simple_expression "|" expression ")"
ExpressionPtr ExpressParser::parseQuery() {
    expect(Kind::LEFT_PAREN);
    const auto variable = expect(Kind::IDENTIFIER);
    expect(Kind::QUERY_OPERATOR);
    auto source = parseSimpleExpression();
    expect(Kind::BITWISE_OR);
    auto condition = parseExpression();
    expect(Kind::RIGHT_PAREN);
    return pMake<QueryExpression>(variable, std::move(source), std::move(condition));
}

ExpressionPtr ExpressParser::parseParenthesised() {
    auto inner = parseExpression();
    expect(Kind::RIGHT_PAREN);
    return inner;
}

ExpressionPtr ExpressParser::parseUnary(UnaryOperator op) {
    return pMake<UnaryExpression>(op, parseSimpleFactor());
}

// literal = "TRUE" | "FALSE" | "UNKNOWN" | INTEGER_LITERAL | REAL_LITERAL | STRING_LITERAL
ExpressionPtr ExpressParser::pParseLiteral() {
    auto literal = pLiteral();
    if (literal)
        vNext();
    return literal;
}

/// The next token as a literal, not consumed yet; null when it is none.
ExpressionPtr ExpressParser::pLiteral() {
    switch (current_.kind) {
    case Kind::TRUE:
        return pMake<LogicalValueExpression>(Logical::True);
    case Kind::FALSE:
        return pMake<LogicalValueExpression>(Logical::False);
    case Kind::UNKNOWN:
        return pMake<LogicalValueExpression>(Logical::Unknown);
    case Kind::INTEGER_LITERAL:
        return pMake<IntegerValueExpression>(current_.integer);
    case Kind::REAL_LITERAL:
        return pMake<DoubleValueExpression>(current_.real);
    case Kind::STRING_LITERAL:
        return pMake<StringValueExpression>(current_.text);
    default:
        return nullptr;
    }
}

// primary = ( "SELF" | "?" | IDENTIFIER arguments | IDENTIFIER ) { qualifier }
ExpressionPtr ExpressParser::parsePrimary() {
    if (boAccept(Kind::SELF))
        return parseQualifiers(pMake<ConstantExpression>(Constant::Self));
    if (boAccept(Kind::QUESTION))
        return parseQualifiers(pMake<ConstantExpression>(Constant::Indeterminate));
    if (!isNext(Kind::IDENTIFIER))
        vFail(std::string(textOf(SyntaxMessage::UnexpectedToken)));
    const auto name = expect(Kind::IDENTIFIER);
    if (isNext(Kind::LEFT_PAREN))
        return parseQualifiers(parseCall(name));
    return parseQualifiers(pMake<GetExpression>(name));
}

// qualifier = "\" IDENTIFIER | "." IDENTIFIER | "[" simple_expression [ ":" simple_expression ] "]"
ExpressionPtr ExpressParser::parseQualifiers(ExpressionPtr base) {
    for (;;) {
        if (boAccept(Kind::BACKSLASH))
            base = pMake<GetExpression>(Qualifier::Group, expect(Kind::IDENTIFIER), std::move(base));
        else if (boAccept(Kind::DOT))
            base = pMake<GetExpression>(Qualifier::Attribute, expect(Kind::IDENTIFIER), std::move(base));
        else if (boAccept(Kind::LEFT_BRACKET))
            base = parseIndex(std::move(base));
        else
            return base;
    }
}

ExpressionPtr ExpressParser::parseIndex(ExpressionPtr base) {
    auto index = parseSimpleExpression();
    ExpressionPtr indexEnd;
    if (boAccept(Kind::COLON))
        indexEnd = parseSimpleExpression();
    expect(Kind::RIGHT_BRACKET);
    return pMake<GetExpression>(std::move(index), std::move(indexEnd), std::move(base));
}

} // namespace kiv::ifc::def::schema
