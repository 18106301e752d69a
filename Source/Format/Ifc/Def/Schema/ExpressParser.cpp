#include "Format/Ifc/Def/Schema/ExpressParser.h"

#include "Format/Ifc/Def/Schema/IfcSchema.h"
#include "Format/Ifc/Def/Schema/IfcSchemaLimits.h"

#include <span>
#include <utility>

namespace kiv::ifc::def::schema {

namespace {

using Kind = ExpressTokenKind;

struct OperatorOfToken {
    Kind token;
    BinaryOperator op;
};

constexpr OperatorOfToken RelationalOperators[] = {{Kind::LESS, BinaryOperator::Less},
                                                   {Kind::GREATER, BinaryOperator::Greater},
                                                   {Kind::LESS_OR_EQUAL, BinaryOperator::LessOrEqual},
                                                   {Kind::GREATER_OR_EQUAL, BinaryOperator::GreaterOrEqual},
                                                   {Kind::NOT_EQUAL, BinaryOperator::NotEqual},
                                                   {Kind::EQUAL, BinaryOperator::Equal},
                                                   {Kind::SEMI_NOT_EQUAL, BinaryOperator::InstanceNotEqual},
                                                   {Kind::SEMI_EQUAL, BinaryOperator::InstanceEqual},
                                                   {Kind::IN, BinaryOperator::In}};

constexpr OperatorOfToken AdditionOperators[] = {{Kind::ADD, BinaryOperator::Add},
                                                 {Kind::SUBTRACT, BinaryOperator::Subtract},
                                                 {Kind::OR, BinaryOperator::Or},
                                                 {Kind::XOR, BinaryOperator::Xor}};

constexpr OperatorOfToken MultiplicationOperators[] = {{Kind::ASTERISK, BinaryOperator::Multiply},
                                                       {Kind::SLASH, BinaryOperator::Divide},
                                                       {Kind::MOD, BinaryOperator::Mod},
                                                       {Kind::AND, BinaryOperator::And},
                                                       {Kind::OR_SIGN, BinaryOperator::Or}};

const OperatorOfToken* pOperatorOf(Kind token, std::span<const OperatorOfToken> operators) {
    for (const auto& entry : operators) {
        if (entry.token == token)
            return &entry;
    }
    return nullptr;
}

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
            parser.vFail("Unexpected token");
        ++nesting_;
    }
    ~NestingGuard() { --nesting_; }
    NestingGuard(const NestingGuard&) = delete;
    NestingGuard& operator=(const NestingGuard&) = delete;

private:
    std::size_t& nesting_;
};

ExpressParser::ExpressParser(ExpressTokenizer& tokenizer, const Schema& schema) :
    tokenizer_(tokenizer), schema_(schema), current_(tokenizer.getToken()) {}

void ExpressParser::vFail(const std::string& message) const {
    throw SyntaxError(message + " at " + std::to_string(current_.line) + ":" +
                      std::to_string(current_.column));
}

ExpressToken ExpressParser::next() {
    return std::exchange(current_, tokenizer_.getToken());
}

bool ExpressParser::boAccept(Kind kind) {
    if (!isNext(kind))
        return false;
    next();
    return true;
}

ExpressToken ExpressParser::expect(Kind kind) {
    auto token = next();
    if (token.kind != kind)
        vFail("Expected token " + sTokenKindName(kind) + " but got " + sTokenKindName(token.kind));
    return token;
}

std::string ExpressParser::sExpectIdentifier() {
    return std::get<std::string>(expect(Kind::IDENTIFIER).value);
}

bool ExpressParser::isNextSchemaObject() const {
    return isNext(Kind::IDENTIFIER) && schema_.pObjectFromName(std::get<std::string>(current_.value));
}

// rule = IDENTIFIER ":" expression ";"
bool ExpressParser::boParseRule(std::vector<ParsedRule>& rules) {
    if (!isNext(Kind::IDENTIFIER))
        return false;
    auto label = sExpectIdentifier();
    expect(Kind::COLON);
    auto expression = parseExpression();
    expect(Kind::SEMICOLON);
    rules.push_back({std::move(label), std::move(expression)});
    return true;
}

// expression = simple_expression [ relational_operator simple_expression ]
// relational_operator = "<" | ">" | "<=" | ">=" | "<>" | "=" | ":<>:" | ":=:" | "IN"
ExpressionPtr ExpressParser::parseExpression() {
    auto left = parseSimpleExpression();
    const auto* const relational = pOperatorOf(current_.kind, RelationalOperators);
    if (!relational)
        return left;
    next();
    return std::make_unique<BinaryExpression>(std::move(left), relational->op, parseSimpleExpression());
}

// simple_expression = term { ( "+" | "-" | "OR" | "XOR" ) term }
ExpressionPtr ExpressParser::parseSimpleExpression() {
    auto left = parseTerm();
    while (const auto* const addition = pOperatorOf(current_.kind, AdditionOperators)) {
        next();
        left = std::make_unique<BinaryExpression>(std::move(left), addition->op, parseTerm());
    }
    return left;
}

// term = factor { ( "*" | "/" | "MOD" | "AND" | "||" ) factor }
ExpressionPtr ExpressParser::parseTerm() {
    auto left = parseFactor();
    while (const auto* const multiplication = pOperatorOf(current_.kind, MultiplicationOperators)) {
        next();
        left = std::make_unique<BinaryExpression>(std::move(left), multiplication->op, parseFactor());
    }
    return left;
}

// factor = simple_factor [ "**" simple_factor ]
ExpressionPtr ExpressParser::parseFactor() {
    auto base = parseSimpleFactor();
    if (!boAccept(Kind::POWER))
        return base;
    return std::make_unique<BinaryExpression>(std::move(base), BinaryOperator::Power, parseSimpleFactor());
}

// simple_factor = aggregate_initializer | schema_object | interval | query | "(" expression ")"
//               | ( "+" | "-" | "NOT" ) simple_factor | literal | primary
ExpressionPtr ExpressParser::parseSimpleFactor() {
    const NestingGuard guard(*this);
    if (boAccept(Kind::LEFT_BRACKET))
        return parseAggregateInitializer();
    if (isNextSchemaObject())
        return parseSchemaObject();
    if (boAccept(Kind::LEFT_BRACE))
        return parseInterval();
    if (boAccept(Kind::QUERY))
        return parseQuery();
    if (boAccept(Kind::LEFT_PAREN))
        return parseParenthesised();
    if (boAccept(Kind::ADD))
        return parseUnary(UnaryOperator::Plus);
    if (boAccept(Kind::SUBTRACT))
        return parseUnary(UnaryOperator::Minus);
    if (boAccept(Kind::NOT))
        return parseUnary(UnaryOperator::Not);
    if (auto literal = pParseLiteral())
        return literal;
    return parsePrimary();
}

// aggregate_initializer = "[" [ element { "," element } ] "]"
ExpressionPtr ExpressParser::parseAggregateInitializer() {
    std::vector<ExpressionPtr> elements;
    if (boAccept(Kind::RIGHT_BRACKET))
        return std::make_unique<AggregateInitializerExpression>(std::move(elements));
    do {
        elements.push_back(parseElement());
    } while (boAccept(Kind::COMMA));
    expect(Kind::RIGHT_BRACKET);
    return std::make_unique<AggregateInitializerExpression>(std::move(elements));
}

// element = expression [ ":" simple_expression ]
ExpressionPtr ExpressParser::parseElement() {
    auto element = parseExpression();
    if (!boAccept(Kind::COLON))
        return element;
    return std::make_unique<RepetitionExpression>(std::move(element), parseSimpleExpression());
}

// schema_object = IDENTIFIER arguments | IDENTIFIER "." IDENTIFIER, where the first names an object of the
// schema
ExpressionPtr ExpressParser::parseSchemaObject() {
    auto name = next();
    if (isNext(Kind::LEFT_PAREN))
        return parseCall(std::get<std::string>(std::move(name.value)));
    expect(Kind::DOT);
    return std::make_unique<EnumerationValueExpression>(std::get<std::string>(std::move(name.value)),
                                                        sExpectIdentifier());
}

// arguments = "(" [ expression { "," expression } ] ")"
ExpressionPtr ExpressParser::parseCall(std::string name) {
    expect(Kind::LEFT_PAREN);
    std::vector<ExpressionPtr> arguments;
    if (!boAccept(Kind::RIGHT_PAREN)) {
        do {
            arguments.push_back(parseExpression());
        } while (boAccept(Kind::COMMA));
        expect(Kind::RIGHT_PAREN);
    }
    return std::make_unique<FunctionCallExpression>(std::move(name), std::move(arguments));
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
    return std::make_unique<IntervalExpression>(std::move(low), lowOperator, std::move(item), highOperator,
                                                std::move(high));
}

// interval_operator = "<" | "<="
IntervalOperator ExpressParser::parseIntervalOperator() {
    if (boAccept(Kind::LESS))
        return IntervalOperator::Less;
    if (boAccept(Kind::LESS_OR_EQUAL))
        return IntervalOperator::LessOrEqual;
    vFail("Expected a interval operator");
}

// query = "QUERY" "(" IDENTIFIER "<*" simple_expression "|" expression ")"
ExpressionPtr ExpressParser::parseQuery() {
    expect(Kind::LEFT_PAREN);
    auto variable = sExpectIdentifier();
    expect(Kind::QUERY_OPERATOR);
    auto source = parseSimpleExpression();
    expect(Kind::BITWISE_OR);
    auto condition = parseExpression();
    expect(Kind::RIGHT_PAREN);
    return std::make_unique<QueryExpression>(std::move(variable), std::move(source), std::move(condition));
}

ExpressionPtr ExpressParser::parseParenthesised() {
    auto inner = parseExpression();
    expect(Kind::RIGHT_PAREN);
    return inner;
}

ExpressionPtr ExpressParser::parseUnary(UnaryOperator op) {
    return std::make_unique<UnaryExpression>(op, parseSimpleFactor());
}

// literal = "TRUE" | "FALSE" | "UNKNOWN" | INTEGER_LITERAL | REAL_LITERAL | STRING_LITERAL
ExpressionPtr ExpressParser::pParseLiteral() {
    switch (current_.kind) {
    case Kind::TRUE:
        next();
        return std::make_unique<LogicalValueExpression>(Logical::True);
    case Kind::FALSE:
        next();
        return std::make_unique<LogicalValueExpression>(Logical::False);
    case Kind::UNKNOWN:
        next();
        return std::make_unique<LogicalValueExpression>(Logical::Unknown);
    case Kind::INTEGER_LITERAL:
        return std::make_unique<IntegerValueExpression>(std::get<int>(next().value));
    case Kind::REAL_LITERAL:
        return std::make_unique<DoubleValueExpression>(std::get<double>(next().value));
    case Kind::STRING_LITERAL:
        return std::make_unique<StringValueExpression>(std::get<std::string>(next().value));
    default:
        return nullptr;
    }
}

// primary = ( "SELF" | "?" | IDENTIFIER arguments | IDENTIFIER ) { qualifier }
ExpressionPtr ExpressParser::parsePrimary() {
    if (boAccept(Kind::SELF))
        return parseQualifiers(std::make_unique<ConstantExpression>(Constant::Self));
    if (boAccept(Kind::QUESTION))
        return parseQualifiers(std::make_unique<ConstantExpression>(Constant::Indeterminate));
    if (!isNext(Kind::IDENTIFIER))
        vFail("Unexpected token");
    auto name = sExpectIdentifier();
    if (isNext(Kind::LEFT_PAREN))
        return parseQualifiers(parseCall(std::move(name)));
    return parseQualifiers(std::make_unique<GetExpression>(std::move(name)));
}

// qualifier = "\" IDENTIFIER | "." IDENTIFIER | "[" simple_expression [ ":" simple_expression ] "]"
ExpressionPtr ExpressParser::parseQualifiers(ExpressionPtr base) {
    for (;;) {
        if (boAccept(Kind::BACKSLASH))
            base = std::make_unique<GetExpression>(Qualifier::Group, sExpectIdentifier(), std::move(base));
        else if (boAccept(Kind::DOT))
            base =
                std::make_unique<GetExpression>(Qualifier::Attribute, sExpectIdentifier(), std::move(base));
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
    return std::make_unique<GetExpression>(std::move(index), std::move(indexEnd), std::move(base));
}

} // namespace kiv::ifc::def::schema
