#include "kivifc/Pictures/ExpressionText.h"

#include "kivifc/Documents/ExpressionOperators.h"

#include <algorithm>
#include <fmt/format.h>
#include <vector>

namespace kiv::kivifc {

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

std::string sWithin(const Expression& expression, Tightness asked) {
    const auto text = sExpression(expression);
    return tightnessOf(expression) < asked ? '(' + text + ')' : text;
}

std::string sList(const ExpressionList& expressions) {
    std::string text;
    for (const auto& expression : expressions)
        text.append(text.empty() ? "" : ", ").append(sExpression(*expression));
    return text;
}

/// A real literal has a decimal point and, perhaps, a capital E.
std::string sReal(double value) {
    auto text = fmt::format("{}", value);
    const auto exponent = text.find('e');
    if (text.find('.') == std::string::npos)
        text.insert(std::min(exponent, text.size()), ".0");
    std::ranges::replace(text, 'e', 'E');
    return text;
}

std::string sQualifier(const GetExpression& node) {
    switch (node.getQualifier()) {
    case Qualifier::Group:
        return fmt::format("\\{}", node.getName());
    case Qualifier::Attribute:
        return fmt::format(".{}", node.getName());
    case Qualifier::Index:
        return fmt::format("[{}{}]", sWithin(*node.pIndex(), Tightness::Sum),
                           node.pIndexEnd() ? ':' + sWithin(*node.pIndexEnd(), Tightness::Sum) : "");
    case Qualifier::None:
        break;
    }
    return std::string(node.getName());
}

class Writer final : public ExpressionVisitor {
public:
    const std::string& getText() const { return text_; }

    // Chains grow to the left as long as the text likes, so they are not recursed on.
    void visit(const GetExpression& node) override {
        std::vector<const GetExpression*> chain{&node};
        const Expression* base = node.pBase();
        while (const auto* next = dynamic_cast<const GetExpression*>(base)) {
            chain.push_back(next);
            base = next->pBase();
        }
        text_ = base ? sWithin(*base, Tightness::Primary) : "";
        for (auto link = chain.rbegin(); link != chain.rend(); ++link)
            text_ += sQualifier(**link);
    }

    void visit(const BinaryExpression& node) override {
        std::vector<const BinaryExpression*> chain{&node};
        const auto* first = &node.getLeft();
        auto asked = bindingOf(node.getOperator()).left;
        while (const auto* link = dynamic_cast<const BinaryExpression*>(first)) {
            if (tightnessOf(*link) < asked)
                break;
            chain.push_back(link);
            asked = bindingOf(link->getOperator()).left;
            first = &link->getLeft();
        }
        text_ = sWithin(*first, asked);
        for (auto link = chain.rbegin(); link != chain.rend(); ++link)
            text_ += fmt::format(" {} {}", sOf(BinaryOperators, (*link)->getOperator()),
                                 sWithin((*link)->getRight(), bindingOf((*link)->getOperator()).right));
    }

    void visit(const UnaryExpression& node) override {
        text_ = sOf(UnaryOperators, node.getOperator());
        if (node.getOperator() == UnaryOperator::Not)
            text_ += ' ';
        text_ += sWithin(node.getOperand(), Tightness::Primary);
    }

    void visit(const QueryExpression& node) override {
        text_ = fmt::format("QUERY({} <* {} | {})", node.getVariable(),
                            sWithin(node.getSource(), Tightness::Sum), sExpression(node.getCondition()));
    }

    void visit(const IntervalExpression& node) override {
        text_ = fmt::format(
            "{{{} {} {} {} {}}}", sWithin(node.getLow(), Tightness::Sum),
            sOf(IntervalOperators, node.getLowOperator()), sWithin(node.getItem(), Tightness::Sum),
            sOf(IntervalOperators, node.getHighOperator()), sWithin(node.getHigh(), Tightness::Sum));
    }

    void visit(const RepetitionExpression& node) override {
        text_ =
            fmt::format("{}:{}", sExpression(node.getElement()), sWithin(node.getCount(), Tightness::Sum));
    }

    void visit(const AggregateInitializerExpression& node) override {
        text_ = '[' + sList(node.getElements()) + ']';
    }

    void visit(const FunctionCallExpression& node) override {
        text_ = fmt::format("{}({})", node.getName(), sList(node.getArguments()));
    }

    void visit(const EnumerationValueExpression& node) override {
        text_ = fmt::format("{}.{}", node.getTypeName(), node.getValueName());
    }

    void visit(const LogicalValueExpression& node) override { text_ = sOf(Logicals, node.getValue()); }
    void visit(const ConstantExpression& node) override { text_ = sOf(Constants, node.getConstant()); }
    void visit(const DoubleValueExpression& node) override { text_ = sReal(node.getValue()); }
    void visit(const IntegerValueExpression& node) override { text_ = fmt::format("{}", node.getValue()); }
    void visit(const StringValueExpression& node) override { text_ = fmt::format("'{}'", node.getValue()); }

private:
    std::string text_;
};

} // namespace

std::string sExpression(const Expression& expression) {
    Writer writer;
    expression.accept(writer);
    return writer.getText();
}

} // namespace kiv::kivifc
