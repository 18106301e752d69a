#include "kivifc/Json/ExpressionJson.h"

#include "kivifc/Documents/ExpressionOperators.h"

#include <utility>
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

Json nodeJson(const char* name) {
    return Json{{"node", name}};
}

Json listJson(const ExpressionList& expressions) {
    Json list = Json::array();
    for (const auto& expression : expressions)
        list.push_back(expressionJson(*expression));
    return list;
}

Json qualifierJson(const GetExpression& node) {
    switch (node.getQualifier()) {
    case Qualifier::Group:
        return {{"group", node.getName()}};
    case Qualifier::Attribute:
        return {{"attribute", node.getName()}};
    case Qualifier::Index: {
        Json json{{"index", expressionJson(*node.pIndex())}};
        if (node.pIndexEnd())
            json["indexEnd"] = expressionJson(*node.pIndexEnd());
        return json;
    }
    case Qualifier::None:
        break;
    }
    return nullptr;
}

class Visitor final : public ExpressionVisitor {
public:
    Json takeJson() { return std::move(json_); }

    void visit(const GetExpression& node) override {
        json_ = nodeJson("GetExpression");
        if (!node.pBase()) {
            json_["name"] = node.getName();
            return;
        }
        std::vector<const GetExpression*> chain{&node};
        const Expression* base = node.pBase();
        while (const auto* next = pQualified(base)) {
            chain.push_back(next);
            base = next->pBase();
        }
        json_["base"] = expressionJson(*base);
        json_["qualifiers"] = Json::array();
        for (auto link = chain.rbegin(); link != chain.rend(); ++link)
            json_["qualifiers"].push_back(qualifierJson(**link));
    }

    void visit(const QueryExpression& node) override {
        json_ = nodeJson("QueryExpression");
        json_["variable"] = node.getVariable();
        json_["source"] = expressionJson(node.getSource());
        json_["condition"] = expressionJson(node.getCondition());
    }

    void visit(const EnumerationValueExpression& node) override {
        json_ = nodeJson("EnumerationValueExpression");
        json_["type"] = node.getTypeName();
        json_["value"] = node.getValueName();
    }

    void visit(const LogicalValueExpression& node) override {
        json_ = nodeJson("LogicalValueExpression");
        json_["value"] = sOf(Logicals, node.getValue());
    }

    void visit(const DoubleValueExpression& node) override {
        json_ = nodeJson("DoubleValueExpression");
        json_["value"] = node.getValue();
    }

    void visit(const IntegerValueExpression& node) override {
        json_ = nodeJson("IntegerValueExpression");
        json_["value"] = node.getValue();
    }

    void visit(const StringValueExpression& node) override {
        json_ = nodeJson("StringValueExpression");
        json_["value"] = node.getValue();
    }

    void visit(const RepetitionExpression& node) override {
        json_ = nodeJson("RepetitionExpression");
        json_["element"] = expressionJson(node.getElement());
        json_["count"] = expressionJson(node.getCount());
    }

    void visit(const AggregateInitializerExpression& node) override {
        json_ = nodeJson("AggregateInitializerExpression");
        json_["elements"] = listJson(node.getElements());
    }

    void visit(const IntervalExpression& node) override {
        json_ = nodeJson("IntervalExpression");
        json_["operands"] = Json::array(
            {expressionJson(node.getLow()), expressionJson(node.getItem()), expressionJson(node.getHigh())});
        json_["operators"] = Json::array(
            {sOf(IntervalOperators, node.getLowOperator()), sOf(IntervalOperators, node.getHighOperator())});
    }

    void visit(const FunctionCallExpression& node) override {
        json_ = nodeJson("FunctionCallExpression");
        json_["name"] = node.getName();
        json_["arguments"] = listJson(node.getArguments());
    }

    void visit(const ConstantExpression& node) override {
        json_ = nodeJson("ConstantExpression");
        json_["constant"] = sOf(Constants, node.getConstant());
    }

    void visit(const BinaryExpression& node) override {
        std::vector<const BinaryExpression*> chain{&node};
        const Expression* first = &node.getLeft();
        while (const auto* link = pSameChain(first, node)) {
            chain.push_back(link);
            first = &link->getLeft();
        }
        Json operands = Json::array({expressionJson(*first)});
        Json operators = Json::array();
        for (auto link = chain.rbegin(); link != chain.rend(); ++link) {
            operands.push_back(expressionJson((*link)->getRight()));
            operators.push_back(sOf(BinaryOperators, (*link)->getOperator()));
        }
        json_ = nodeJson("BinaryExpression");
        json_["operands"] = std::move(operands);
        json_["operators"] = std::move(operators);
    }

    void visit(const UnaryExpression& node) override {
        json_ = nodeJson("UnaryExpression");
        json_["operator"] = sOf(UnaryOperators, node.getOperator());
        json_["operand"] = expressionJson(node.getOperand());
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

    Json json_;
};

} // namespace

Json expressionJson(const Expression& expression) {
    Visitor visitor;
    expression.accept(visitor);
    return visitor.takeJson();
}

} // namespace kiv::kivifc
