#include "kiv/Kit/Express/ExpressionText.h"

#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Kit/Express/ExpressionOperators.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::kit {

namespace {

using namespace ifc::def::schema;

/// How tightly an expression holds together; what an operator binds holds at least as tightly as it asks for.
enum class Tightness { Relation, Sum, Product, Power, Unary, Primary };

/// How tightly an operator's result holds, and its operands have to.
struct Binding {
    Tightness self;
    Tightness left;
    Tightness right;
};

Binding bindingOf(BinaryOperator op) {
    switch (op) {
    case BinaryOperator::Add:
    case BinaryOperator::Subtract:
    case BinaryOperator::Or:
    case BinaryOperator::Xor:
        return {Tightness::Sum, Tightness::Sum, Tightness::Product};
    case BinaryOperator::Multiply:
    case BinaryOperator::Divide:
    case BinaryOperator::And:
    case BinaryOperator::Mod:
        return {Tightness::Product, Tightness::Product, Tightness::Power};
    case BinaryOperator::Power:
        return {Tightness::Power, Tightness::Unary, Tightness::Unary};
    default:
        return {Tightness::Relation, Tightness::Sum, Tightness::Sum};
    }
}

Tightness tightnessOf(const Expression& expression) {
    if (const auto* binary = dynamic_cast<const BinaryExpression*>(&expression))
        return bindingOf(binary->getOperator()).self;
    return dynamic_cast<const UnaryExpression*>(&expression) ? Tightness::Unary : Tightness::Primary;
}

/// A real literal has a decimal point and, perhaps, a capital E. Numbers from 0.0001 up to 1E16 have none.
std::string sReal(double value) {
    std::array<char, 64> digits{};
    const auto write = [&digits](double number, std::chars_format format) {
        return std::string(digits.data(),
                           std::to_chars(digits.data(), digits.data() + digits.size(), number, format).ptr);
    };
    auto text = write(value, std::chars_format::scientific);
    const auto power = std::stoi(text.substr(text.find('e') + 1));
    if (power >= -4 && power < 16)
        text = write(value, std::chars_format::fixed);
    const auto exponent = text.find('e');
    if (text.find('.') == std::string::npos)
        text.insert(std::min(exponent, text.size()), ".0");
    std::ranges::replace(text, 'e', 'E');
    return text;
}

/// Writes one expression after the other to one text.
class Writer final : public ExpressionVisitor {
public:
    explicit Writer(const ExpressionStyle& style) : style_(style) {}

    void vWrite(const Expression& expression) { expression.accept(*this); }

    std::string takeText() { return std::move(text_); }

    std::vector<ExpressionJoin> takeJoins() {
        // An operand is written before what joins it to others.
        std::ranges::stable_sort(joins_, [](const ExpressionJoin& left, const ExpressionJoin& right) {
            return left.begin < right.begin || (left.begin == right.begin && left.end > right.end);
        });
        return std::move(joins_);
    }

    // Chains grow to the left as long as the text likes, so they are not recursed on.
    void visit(const GetExpression& node) override {
        std::vector<const GetExpression*> chain{&node};
        const Expression* base = node.pBase();
        while (const auto* next = dynamic_cast<const GetExpression*>(base)) {
            chain.push_back(next);
            base = next->pBase();
        }
        if (base)
            vWithinWrite(*base, Tightness::Primary);
        for (auto link = chain.rbegin(); link != chain.rend(); ++link)
            vQualifierWrite(**link);
    }

    void visit(const BinaryExpression& node) override {
        std::vector<const BinaryExpression*> chain{&node};
        const auto* first = &node.getLeft();
        auto asked = bindingOf(node.getOperator()).left;
        while (const auto* link = dynamic_cast<const BinaryExpression*>(first)) {
            if (tightnessOf(*link) < asked || isGrouped(*chain.back(), *link))
                break;
            chain.push_back(link);
            asked = bindingOf(link->getOperator()).left;
            first = &link->getLeft();
        }
        const auto begin = text_.size();
        vOperandWrite(*chain.back(), *first, asked);
        auto join = NoJoin;
        for (auto link = chain.rbegin(); link != chain.rend(); ++link) {
            vWordsWrite(" ");
            join = joinGoOn(join, **link, begin);
            vWordsWrite(sOperator(**link), " ");
            vOperandWrite(**link, (*link)->getRight(), bindingOf((*link)->getOperator()).right);
            if (join != NoJoin)
                joins_[join].end = text_.size();
        }
    }

    void visit(const UnaryExpression& node) override {
        vWordsWrite(sOf(UnaryOperators, node.getOperator()),
                    node.getOperator() == UnaryOperator::Not ? " " : "");
        vWithinWrite(node.getOperand(), Tightness::Primary);
    }

    void visit(const QueryExpression& node) override {
        vWordsWrite("QUERY(", node.getVariable(), " <* ");
        vWithinWrite(node.getSource(), Tightness::Sum);
        vWordsWrite(" | ");
        vWrite(node.getCondition());
        vWordsWrite(")");
    }

    void visit(const IntervalExpression& node) override {
        vWordsWrite("{");
        vWithinWrite(node.getLow(), Tightness::Sum);
        vWordsWrite(" ", sOf(IntervalOperators, node.getLowOperator()), " ");
        vWithinWrite(node.getItem(), Tightness::Sum);
        vWordsWrite(" ", sOf(IntervalOperators, node.getHighOperator()), " ");
        vWithinWrite(node.getHigh(), Tightness::Sum);
        vWordsWrite("}");
    }

    void visit(const RepetitionExpression& node) override {
        vWrite(node.getElement());
        vWordsWrite(":");
        vWithinWrite(node.getCount(), Tightness::Sum);
    }

    void visit(const AggregateInitializerExpression& node) override {
        vListWrite("[", node.getElements(), "]");
    }

    void visit(const FunctionCallExpression& node) override {
        vWordsWrite(node.getName());
        vListWrite("(", node.getArguments(), ")");
    }

    void visit(const EnumerationValueExpression& node) override {
        vWordsWrite(node.getTypeName(), ".", node.getValueName());
    }

    void visit(const LogicalValueExpression& node) override { vWordsWrite(sOf(Logicals, node.getValue())); }
    void visit(const ConstantExpression& node) override { vWordsWrite(sOf(Constants, node.getConstant())); }
    void visit(const DoubleValueExpression& node) override { vWordsWrite(sReal(node.getValue())); }
    void visit(const IntegerValueExpression& node) override { vWordsWrite(std::to_string(node.getValue())); }
    void visit(const StringValueExpression& node) override { vWordsWrite("'", node.getValue(), "'"); }

private:
    static constexpr auto NoJoin = static_cast<std::size_t>(-1);

    /// The join whose next word is written here: `join` when it has the same operator, else a new one, or
    /// none.
    std::size_t joinGoOn(std::size_t join, const BinaryExpression& node, std::size_t begin) {
        const auto op = node.getOperator();
        if ((op != BinaryOperator::And && op != BinaryOperator::Or) || isInstanceJoinHere(node))
            return NoJoin;
        if (join == NoJoin || joins_[join].op != op) {
            join = joins_.size();
            joins_.push_back({op, begin, begin, {}});
        }
        joins_[join].words.push_back(text_.size());
        return join;
    }

    template <class... Words>
    void vWordsWrite(const Words&... words) {
        (text_.append(words), ...);
    }

    void vWithinWrite(const Expression& expression, Tightness asked) {
        const bool isLoose = tightnessOf(expression) < asked;
        vWordsWrite(isLoose ? "(" : "");
        vWrite(expression);
        vWordsWrite(isLoose ? ")" : "");
    }

    void vOperandWrite(const BinaryExpression& outer, const Expression& operand, Tightness asked) {
        const bool isGroup = isGrouped(outer, operand);
        vWordsWrite(isGroup ? "(" : "");
        vWithinWrite(operand, asked);
        vWordsWrite(isGroup ? ")" : "");
    }

    /// Written in parentheses though the tree does not need them.
    bool isGrouped(const BinaryExpression& outer, const Expression& operand) const {
        const bool isLooser =
            outer.getOperator() == BinaryOperator::Or || outer.getOperator() == BinaryOperator::Xor;
        const auto* inner = dynamic_cast<const BinaryExpression*>(&operand);
        return style_.groupsAnd && isLooser && inner && inner->getOperator() == BinaryOperator::And;
    }

    std::string_view sOperator(const BinaryExpression& node) const {
        return isInstanceJoinHere(node) ? std::string_view("||") : sOf(BinaryOperators, node.getOperator());
    }

    bool isInstanceJoinHere(const BinaryExpression& node) const {
        return style_.pSchema && isInstanceJoin(node, *style_.pSchema);
    }

    void vListWrite(std::string_view open, const ExpressionList& expressions, std::string_view close) {
        vWordsWrite(open);
        std::string_view separator;
        for (const auto& expression : expressions) {
            vWordsWrite(separator);
            vWrite(*expression);
            separator = ", ";
        }
        vWordsWrite(close);
    }

    void vQualifierWrite(const GetExpression& node) {
        switch (node.getQualifier()) {
        case Qualifier::Group:
            return vWordsWrite("\\", node.getName());
        case Qualifier::Attribute:
            return vWordsWrite(".", node.getName());
        case Qualifier::Index:
            return vIndexWrite(node);
        case Qualifier::None:
            return vWordsWrite(node.getName());
        }
    }

    void vIndexWrite(const GetExpression& node) {
        vWordsWrite("[");
        vWithinWrite(*node.pIndex(), Tightness::Sum);
        if (node.pIndexEnd()) {
            vWordsWrite(":");
            vWithinWrite(*node.pIndexEnd(), Tightness::Sum);
        }
        vWordsWrite("]");
    }

    ExpressionStyle style_;
    std::string text_;
    std::vector<ExpressionJoin> joins_;
};

bool isEntityCall(const Expression& expression, const Schema& schema) {
    const auto* call = dynamic_cast<const FunctionCallExpression*>(&expression);
    return call && Entity::pFrom(schema.pObjectFromName(call->getName()));
}

} // namespace

std::string sExpression(const Expression& expression) {
    return sExpressionAs(expression, {});
}

std::string sExpressionAs(const Expression& expression, const ExpressionStyle& style) {
    Writer writer(style);
    writer.vWrite(expression);
    return writer.takeText();
}

JoinedExpression joinedExpressionAs(const Expression& expression, const ExpressionStyle& style) {
    Writer writer(style);
    writer.vWrite(expression);
    return {writer.takeText(), writer.takeJoins()};
}

bool isInstanceJoin(const BinaryExpression& expression, const Schema& schema) {
    return expression.getOperator() == BinaryOperator::Or &&
           (isEntityCall(expression.getLeft(), schema) || isEntityCall(expression.getRight(), schema));
}

} // namespace kiv::kit
