#include "kivifc/Json/ExpressionJson.h"

#include "kiv/Kit/Express/ExpressionOperators.h"

#include <array>
#include <string_view>
#include <vector>

namespace kiv::kivifc {

namespace {

using namespace ifc::def::schema;

/// Which operators make chains that grow to the left as long as the text likes. Relations and powers do so
/// within parentheses only. Sums and products are one class, because OR and || are one operator in the tree,
/// but one of sums in the first case and of products in the second.
enum class Chain { Relation, SumOrProduct, Power };

Chain chainOf(BinaryOperator op) {
    if (op == BinaryOperator::Power)
        return Chain::Power;
    return op < BinaryOperator::Power ? Chain::SumOrProduct : Chain::Relation;
}

class Visitor final : public ExpressionVisitor {
public:
    explicit Visitor(JsonWriter& writer) : writer_(writer) {}

    void visit(const GetExpression& node) override {
        vNodeBegin("GetExpression");
        if (node.pBase())
            vQualifiedWrite(node);
        else
            writer_.vMember("name", node.getName());
        writer_.vObjectEnd();
    }

    void visit(const QueryExpression& node) override {
        vNodeBegin("QueryExpression");
        writer_.vMember("variable", node.getVariable());
        vMember("source", node.getSource());
        vMember("condition", node.getCondition());
        writer_.vObjectEnd();
    }

    void visit(const EnumerationValueExpression& node) override {
        vNodeBegin("EnumerationValueExpression");
        writer_.vMember("type", node.getTypeName());
        writer_.vMember("value", node.getValueName());
        writer_.vObjectEnd();
    }

    void visit(const LogicalValueExpression& node) override {
        vValueNodeWrite("LogicalValueExpression", kit::sOf(kit::Logicals, node.getValue()));
    }

    void visit(const DoubleValueExpression& node) override {
        vValueNodeWrite("DoubleValueExpression", node.getValue());
    }

    void visit(const IntegerValueExpression& node) override {
        vValueNodeWrite("IntegerValueExpression", node.getValue());
    }

    void visit(const StringValueExpression& node) override {
        vValueNodeWrite("StringValueExpression", node.getValue());
    }

    void visit(const RepetitionExpression& node) override {
        vNodeBegin("RepetitionExpression");
        vMember("element", node.getElement());
        vMember("count", node.getCount());
        writer_.vObjectEnd();
    }

    void visit(const AggregateInitializerExpression& node) override {
        vNodeBegin("AggregateInitializerExpression");
        vMembers("elements", node.getElements());
        writer_.vObjectEnd();
    }

    void visit(const IntervalExpression& node) override {
        vNodeBegin("IntervalExpression");
        writer_.vKey("operands");
        writer_.vArrayBegin();
        vWrite(node.getLow());
        vWrite(node.getItem());
        vWrite(node.getHigh());
        writer_.vArrayEnd();
        writer_.vMembers("operators", std::array{kit::sOf(kit::IntervalOperators, node.getLowOperator()),
                                                 kit::sOf(kit::IntervalOperators, node.getHighOperator())});
        writer_.vObjectEnd();
    }

    void visit(const FunctionCallExpression& node) override {
        vNodeBegin("FunctionCallExpression");
        writer_.vMember("name", node.getName());
        vMembers("arguments", node.getArguments());
        writer_.vObjectEnd();
    }

    void visit(const ConstantExpression& node) override {
        vNodeBegin("ConstantExpression");
        writer_.vMember("constant", kit::sOf(kit::Constants, node.getConstant()));
        writer_.vObjectEnd();
    }

    void visit(const BinaryExpression& node) override {
        std::vector<const BinaryExpression*> chain{&node};
        const Expression* first = &node.getLeft();
        while (const auto* link = pSameChain(first, node)) {
            chain.push_back(link);
            first = &link->getLeft();
        }
        vNodeBegin("BinaryExpression");
        writer_.vKey("operands");
        writer_.vArrayBegin();
        vWrite(*first);
        for (auto link = chain.rbegin(); link != chain.rend(); ++link)
            vWrite((*link)->getRight());
        writer_.vArrayEnd();
        writer_.vKey("operators");
        writer_.vArrayBegin();
        for (auto link = chain.rbegin(); link != chain.rend(); ++link)
            writer_.vValue(kit::sOf(kit::BinaryOperators, (*link)->getOperator()));
        writer_.vArrayEnd();
        writer_.vObjectEnd();
    }

    void visit(const UnaryExpression& node) override {
        vNodeBegin("UnaryExpression");
        writer_.vMember("operator", kit::sOf(kit::UnaryOperators, node.getOperator()));
        vMember("operand", node.getOperand());
        writer_.vObjectEnd();
    }

private:
    /// The expression as one that qualifies another; null when it is none.
    static const GetExpression* pQualified(const Expression* expression) {
        const auto* get = dynamic_cast<const GetExpression*>(expression);
        return get && get->pBase() ? get : nullptr;
    }

    /// The expression as one that continues the chain of the node; null when it does not.
    static const BinaryExpression* pSameChain(const Expression* expression, const BinaryExpression& node) {
        const auto* binary = dynamic_cast<const BinaryExpression*>(expression);
        return binary && chainOf(binary->getOperator()) == chainOf(node.getOperator()) ? binary : nullptr;
    }

    void vNodeBegin(const char* name) {
        writer_.vObjectBegin();
        writer_.vMember("node", name);
    }

    void vWrite(const Expression& expression) { expression.accept(*this); }

    void vMember(std::string_view key, const Expression& expression) {
        writer_.vKey(key);
        vWrite(expression);
    }

    void vMembers(std::string_view key, const ExpressionList& expressions) {
        writer_.vKey(key);
        writer_.vArrayBegin();
        for (const auto& expression : expressions)
            vWrite(*expression);
        writer_.vArrayEnd();
    }

    template <typename Value>
    void vValueNodeWrite(const char* name, const Value& value) {
        vNodeBegin(name);
        writer_.vMember("value", value);
        writer_.vObjectEnd();
    }

    void vQualifiedWrite(const GetExpression& node) {
        std::vector<const GetExpression*> chain{&node};
        const Expression* base = node.pBase();
        while (const auto* next = pQualified(base)) {
            chain.push_back(next);
            base = next->pBase();
        }
        vMember("base", *base);
        writer_.vKey("qualifiers");
        writer_.vArrayBegin();
        for (auto link = chain.rbegin(); link != chain.rend(); ++link)
            vQualifierWrite(**link);
        writer_.vArrayEnd();
    }

    void vQualifierWrite(const GetExpression& node) {
        if (node.getQualifier() == Qualifier::None)
            return writer_.vValue(nullptr);
        writer_.vObjectBegin();
        if (node.getQualifier() == Qualifier::Index) {
            vMember("index", *node.pIndex());
            if (node.pIndexEnd())
                vMember("indexEnd", *node.pIndexEnd());
        } else {
            writer_.vMember(node.getQualifier() == Qualifier::Group ? "group" : "attribute", node.getName());
        }
        writer_.vObjectEnd();
    }

    JsonWriter& writer_;
};

} // namespace

void vExpressionWrite(const Expression& expression, JsonWriter& writer) {
    Visitor visitor(writer);
    expression.accept(visitor);
}

} // namespace kiv::kivifc
