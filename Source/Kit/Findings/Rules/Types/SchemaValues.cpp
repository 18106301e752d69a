#include "Kit/Findings/Rules/Types/SchemaValues.h"

#include "Kit/Text/AsciiText.h"
#include "Kit/Text/Utf8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <span>

namespace kiv::kit {

namespace schema = ifc::def::schema;

namespace {

constexpr std::string_view UnitEnd = "UNIT";
/// A schema that is wrong may define types by each other in a circle.
constexpr int MaxTypeChain = 64;

/// The text without one sign before its digits.
std::string_view unsignedPart(std::string_view text) {
    const bool isSigned = !text.empty() && (text.front() == '+' || text.front() == '-');
    return text.substr(isSigned ? 1 : 0);
}

bool boIsInteger(std::string_view text) {
    const auto digits = unsignedPart(text);
    return !digits.empty() && std::ranges::all_of(digits, isDigit);
}

/// STEP files write .T., XML documents true or 1.
bool boIsTruth(std::string_view text, bool withUnknown) {
    constexpr std::array Known = {"TRUE", "FALSE", ".T.", ".F.", "T", "F", "1", "0"};
    constexpr std::array Unknown = {"UNKNOWN", ".U.", "U"};
    const auto upper = sUpperCase(text);
    return std::ranges::count(Known, upper) != 0 || (withUnknown && std::ranges::count(Unknown, upper) != 0);
}

/// The width is in characters, of which UTF-8 needs up to four bytes each.
bool boFitsWidth(std::string_view text, const schema::DataTypeBase& type) {
    const auto* string = dynamic_cast<const schema::DataTypeString*>(&type);
    return !string || string->getWidth() == 0 || codePointsIn(text) <= string->getWidth();
}

bool boIsItem(std::string_view text, const schema::DataTypeBase& type) {
    const auto* enumeration = dynamic_cast<const schema::DataTypeEnum*>(&type);
    const bool isDotted = text.size() > 2 && text.front() == '.' && text.back() == '.';
    const auto item = sUpperCase(isDotted ? text.substr(1, text.size() - 2) : text);
    return !enumeration || enumeration->boContains(item) || enumeration->boContains(text);
}

ValueFit fitIf(bool fits) {
    return fits ? ValueFit::Yes : ValueFit::No;
}

/// An enumeration of units: every item ends in UNIT, but for USERDEFINED and NOTDEFINED, and there are some.
bool boNamesUnits(std::span<const std::string_view> items) {
    bool hasUnit = false;
    for (const auto item : items) {
        const bool isUnit = item.ends_with(UnitEnd);
        if (!isUnit && item != "USERDEFINED" && item != "NOTDEFINED")
            return false;
        hasUnit = hasUnit || isUnit;
    }
    return hasUnit;
}

/// "LENGTHUNIT" for IfcLengthMeasure, whether or not there is such a unit; empty for a type that is no
/// measure.
std::string sUnitNameOf(std::string_view measure) {
    constexpr std::string_view Prefix = "IFC";
    constexpr std::string_view End = "MEASURE";
    if (!measure.starts_with(Prefix) || !measure.ends_with(End) ||
        measure.size() <= Prefix.size() + End.size())
        return {};
    const auto quantity = measure.substr(Prefix.size(), measure.size() - Prefix.size() - End.size());
    return std::string(quantity).append(UnitEnd);
}

/// The exponent of a number, within a hundred million: "e+400" is 400.
std::int64_t exponentOf(std::string_view text) {
    constexpr std::int64_t most = 100'000'000;
    const auto digits = unsignedPart(text);
    std::int64_t exponent = 0;
    for (const char digit : digits)
        exponent = std::min(exponent * 10 + (digit - '0'), most);
    return text.starts_with('-') ? -exponent : exponent;
}

/// For digits that are a number and out of the range of a double: whether it is a very large one, or one very
/// near to zero.
bool isVeryLarge(std::string_view digits) {
    const auto mark = std::min(digits.find_first_of("eE"), digits.size());
    const auto mantissa = digits.substr(0, mark);
    const auto point = std::min(mantissa.find('.'), mantissa.size());
    const auto first = mantissa.find_first_not_of("0.");
    const auto exponent = mark == digits.size() ? 0 : exponentOf(digits.substr(mark + 1));
    return static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first) + exponent > 0;
}

enum class Truth : std::uint8_t { False, True, Unknown };

Truth truthIf(bool holds) {
    return holds ? Truth::True : Truth::False;
}

bool isSelf(const schema::Expression& expression) {
    const auto* constant = dynamic_cast<const schema::ConstantExpression*>(&expression);
    return constant && constant->getConstant() == schema::Constant::Self;
}

std::optional<double> unsignedNumberIn(const schema::Expression& expression) {
    if (const auto* real = dynamic_cast<const schema::DoubleValueExpression*>(&expression))
        return real->getValue();
    if (const auto* integer = dynamic_cast<const schema::IntegerValueExpression*>(&expression))
        return integer->getValue();
    return std::nullopt;
}

std::optional<double> numberIn(const schema::Expression& expression) {
    const auto* sign = dynamic_cast<const schema::UnaryExpression*>(&expression);
    if (!sign)
        return unsignedNumberIn(expression);
    const auto number = unsignedNumberIn(sign->getOperand());
    if (!number || sign->getOperator() == schema::UnaryOperator::Not)
        return std::nullopt;
    return sign->getOperator() == schema::UnaryOperator::Minus ? -*number : *number;
}

/// A number in the place of SELF. A bound may be where values may not.
struct Self {
    double number = 0;
    bool isBound = true;
};

Truth comparison(double left, schema::BinaryOperator op, double right, bool isBound) {
    switch (op) {
    case schema::BinaryOperator::Less:
        return truthIf(isBound ? left <= right : left < right);
    case schema::BinaryOperator::LessOrEqual:
        return truthIf(left <= right);
    case schema::BinaryOperator::Greater:
        return truthIf(isBound ? left >= right : left > right);
    case schema::BinaryOperator::GreaterOrEqual:
        return truthIf(left >= right);
    default:
        return Truth::Unknown;
    }
}

/// SELF > 0, 0 < SELF
Truth comparisonOf(const Self& self, const schema::BinaryExpression& expression) {
    const auto left = isSelf(expression.getLeft()) ? self.number : numberIn(expression.getLeft());
    const auto right = isSelf(expression.getRight()) ? self.number : numberIn(expression.getRight());
    return left && right ? comparison(*left, expression.getOperator(), *right, self.isBound) : Truth::Unknown;
}

/// {0 <= SELF <= 1}
Truth intervalOf(const Self& self, const schema::IntervalExpression& expression) {
    const auto low = numberIn(expression.getLow());
    const auto high = numberIn(expression.getHigh());
    if (!low || !high || !isSelf(expression.getItem()))
        return Truth::Unknown;
    return truthIf(*low <= self.number && self.number <= *high);
}

Truth partOf(const Self& self, const schema::Expression& expression) {
    if (const auto* interval = dynamic_cast<const schema::IntervalExpression*>(&expression))
        return intervalOf(self, *interval);
    const auto* binary = dynamic_cast<const schema::BinaryExpression*>(&expression);
    return binary ? comparisonOf(self, *binary) : Truth::Unknown;
}

/// A comparison, or several that are joined by AND, of which chains grow to the left.
Truth truthOf(const Self& self, const schema::Expression& expression) {
    auto truth = Truth::True;
    const auto vJoin = [&truth](Truth part) {
        const bool isUnknown = truth == Truth::Unknown || part == Truth::Unknown;
        truth = isUnknown ? Truth::Unknown : truthIf(truth == Truth::True && part == Truth::True);
    };
    const auto* left = &expression;
    const auto* both = dynamic_cast<const schema::BinaryExpression*>(left);
    while (both && both->getOperator() == schema::BinaryOperator::And) {
        vJoin(partOf(self, both->getRight()));
        left = &both->getLeft();
        both = dynamic_cast<const schema::BinaryExpression*>(left);
    }
    vJoin(partOf(self, *left));
    return truth;
}

/// Absent for a number that is so near to zero that a double cannot say on which side of it.
std::optional<double> comparableNumberOf(std::string_view text) {
    const auto number = numberOf(text);
    const auto mantissa = text.substr(0, text.find_first_of("eE"));
    const bool isLost = number && *number == 0 && mantissa.find_first_of("123456789") != text.npos;
    return isLost ? std::nullopt : number;
}

BrokenRule brokenRuleOf(std::string_view text, const schema::Type& type, bool isBound) {
    const auto number = comparableNumberOf(trimmed(text));
    // What is no value of the type at all is found as such.
    if (!number || !isOfNumbers(type) || fitOf(text, *type.pDataType()) == ValueFit::No)
        return {};
    const bool isInteger = type.pDataType()->getDataTypeKind() == schema::DataTypeKind::Integer;
    const Self self{*number, isBound && !isInteger};
    const auto* owner = &type;
    for (int i = 0; owner && i != MaxTypeChain; ++i) {
        const auto* where = owner->pWhere();
        const auto rules = where ? where->getRules() : schema::ParsedRules();
        for (const auto& rule : rules) {
            if (rule.expression && truthOf(self, *rule.expression) == Truth::False)
                return {owner, &rule};
        }
        owner = schema::Type::pFrom(owner->pUnderlying());
    }
    return {};
}

} // namespace

BrokenRule brokenRuleOf(std::string_view bound, const schema::Type& type) {
    return brokenRuleOf(bound, type, true);
}

BrokenRule brokenRuleOfValue(std::string_view value, const schema::Type& type) {
    return brokenRuleOf(value, type, false);
}

bool isOfNumbers(const schema::Type& type) {
    const auto* dataType = type.pDataType();
    const auto kind = dataType ? dataType->getDataTypeKind() : schema::DataTypeKind::String;
    return kind == schema::DataTypeKind::Real || kind == schema::DataTypeKind::Number ||
           kind == schema::DataTypeKind::Integer;
}

std::optional<double> numberOf(std::string_view text) {
    const auto digits = unsignedPart(text);
    // Neither "inf" nor "nan" nor a second sign is a number.
    if (digits.empty() || !(isDigit(digits.front()) || digits.front() == '.'))
        return std::nullopt;
    double number = 0;
    const auto* const end = digits.data() + digits.size();
    const auto result = std::from_chars(digits.data(), end, number);
    if (result.ptr != end || result.ec == std::errc::invalid_argument)
        return std::nullopt;
    if (result.ec == std::errc::result_out_of_range)
        number = isVeryLarge(digits) ? std::numeric_limits<double>::infinity() : 0;
    return text.front() == '-' ? -number : number;
}

ValueFit fitOf(std::string_view value, const schema::DataTypeBase& type) {
    const auto text = trimmed(value);
    if (text.empty() || text == "?")
        return ValueFit::Yes;
    switch (type.getDataTypeKind()) {
    case schema::DataTypeKind::Real:
    case schema::DataTypeKind::Number:
        return fitIf(numberOf(text).has_value());
    case schema::DataTypeKind::Integer:
        return fitIf(boIsInteger(text));
    case schema::DataTypeKind::Boolean:
        return fitIf(boIsTruth(text, false));
    case schema::DataTypeKind::Logical:
        return fitIf(boIsTruth(text, true));
    case schema::DataTypeKind::String:
        return fitIf(boFitsWidth(text, type));
    case schema::DataTypeKind::Enumeration:
        return fitIf(boIsItem(text, type));
    default:
        return ValueFit::Unknown;
    }
}

std::string sValuesOf(const schema::DataTypeBase& type) {
    switch (type.getDataTypeKind()) {
    case schema::DataTypeKind::Real:
    case schema::DataTypeKind::Number:
        return "a number";
    case schema::DataTypeKind::Integer:
        return "an integer";
    case schema::DataTypeKind::Boolean:
        return "true or false";
    case schema::DataTypeKind::Logical:
        return "true, false or unknown";
    case schema::DataTypeKind::Enumeration:
        return "one of its items";
    case schema::DataTypeKind::String:
        if (const auto* string = dynamic_cast<const schema::DataTypeString*>(&type);
            string && string->getWidth())
            return "a text of at most " + std::to_string(string->getWidth()) + " characters";
        return "a text";
    default:
        return {};
    }
}

SchemaUnits::SchemaUnits(const schema::Schema& schema) : schema_(schema) {
    for (const auto* object : schema.getObjects()) {
        const auto* type = schema::Type::pFrom(object);
        const auto* items = type ? dynamic_cast<const schema::DataTypeEnum*>(type->pUnderlying()) : nullptr;
        if (!items || !boNamesUnits(items->getItems()))
            continue;
        for (const auto item : items->getItems()) {
            if (item.ends_with(UnitEnd))
                units_.insert(item);
        }
    }
}

std::string_view SchemaUnits::unitOf(const schema::Type& measure) const {
    const auto* type = &measure;
    for (int i = 0; type && i != MaxTypeChain; ++i) {
        if (const auto unit = units_.find(sUnitNameOf(type->getNameUpper())); unit != units_.end())
            return *unit;
        type = schema::Type::pFrom(type->pUnderlying());
    }
    return {};
}

const schema::Type* SchemaUnits::pMeasureOf(std::string_view unit) const {
    if (!unit.ends_with(UnitEnd))
        return nullptr;
    const auto quantity = unit.substr(0, unit.size() - UnitEnd.size());
    return schema::Type::pFrom(
        schema_.pObjectFromName(std::string("Ifc").append(quantity).append("Measure")));
}

const schema::Type* pSelectOf(const schema::Schema& schema, std::string_view entity,
                              std::string_view attribute) {
    const auto* owner = schema::Entity::pFrom(schema.pObjectFromName(entity));
    const auto* found = owner ? owner->pAttributeFromName(schema::AttributeName(attribute), true) : nullptr;
    if (!found || found->getResolvedTypes().empty())
        return nullptr;
    const auto* type = schema::Type::pFrom(found->getResolvedTypes().back());
    return type && dynamic_cast<const schema::DataTypeSelect*>(type->pDataType()) ? type : nullptr;
}

bool boIsSelected(const schema::Type* select, const schema::ObjectBase& type) {
    if (!select || select == &type)
        return true;
    return static_cast<const schema::DataTypeSelect*>(select->pDataType())->isCompatible(type);
}

bool SelectedValues::boHas(const Select& select) {
    steps_.assign(1, {&select, 0});
    seen_ = {&select};
    std::size_t number = 0;
    while (number != steps_.size() && !boStep(number))
        ++number;
    if (number == steps_.size()) {
        for (const auto& step : steps_)
            known_[step.select] = false;
        return false;
    }
    // So do all those that led there.
    for (; number != 0; number = steps_[number].from)
        known_[steps_[number].select] = true;
    known_[&select] = true;
    return true;
}

bool SelectedValues::boStep(std::size_t number) {
    const auto& select = *steps_[number].select;
    if (const auto known = known_.find(&select); known != known_.end())
        return known->second;
    for (const auto name : select.getMemberNames()) {
        const auto* object = schema_.pObjectFromName(name);
        const auto* type = schema::Type::pFrom(object);
        const auto* inner = type ? dynamic_cast<const Select*>(type->pDataType()) : nullptr;
        if (!inner && (!object || type))
            return true;
        if (inner && seen_.insert(inner).second)
            steps_.push_back({inner, number});
    }
    return select.getMemberNames().empty();
}

} // namespace kiv::kit
