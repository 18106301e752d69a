#include "kiv/Format/Ifc/Def/Schema/ExpressExpression.h"

#include "Base/Arena.h"

#include <gtest/gtest.h>

#include <array>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace kiv::ifc::def::schema;

/// A node on its own, as hosts make them.
template <class Node, class... Arguments>
ExpressionPtr pNode(Arguments&&... arguments) {
    return ExpressionPtr(new Node(std::forward<Arguments>(arguments)..., nullptr));
}

ExpressionPtr pName(std::string_view name) {
    return pNode<GetExpression>(name);
}

/// Says which operation was called.
struct KindVisitor final : ExpressionVisitor {
    void visit(const GetExpression& /*node*/) override { kind = "get"; }
    void visit(const QueryExpression& /*node*/) override { kind = "query"; }
    void visit(const EnumerationValueExpression& /*node*/) override { kind = "enumeration"; }
    void visit(const LogicalValueExpression& /*node*/) override { kind = "logical"; }
    void visit(const DoubleValueExpression& /*node*/) override { kind = "double"; }
    void visit(const IntegerValueExpression& /*node*/) override { kind = "integer"; }
    void visit(const StringValueExpression& /*node*/) override { kind = "string"; }
    void visit(const RepetitionExpression& /*node*/) override { kind = "repetition"; }
    void visit(const AggregateInitializerExpression& /*node*/) override { kind = "aggregate"; }
    void visit(const IntervalExpression& /*node*/) override { kind = "interval"; }
    void visit(const FunctionCallExpression& /*node*/) override { kind = "call"; }
    void visit(const ConstantExpression& /*node*/) override { kind = "constant"; }
    void visit(const BinaryExpression& /*node*/) override { kind = "binary"; }
    void visit(const UnaryExpression& /*node*/) override { kind = "unary"; }

    std::string_view kind;
};

std::string_view kindOf(const Expression& node) {
    KindVisitor visitor;
    node.accept(visitor);
    return visitor.kind;
}

/// The name of a plain reference.
std::string_view nameOf(const Expression* node) {
    const auto* name = dynamic_cast<const GetExpression*>(node);
    return name ? name->getName() : std::string_view("no name");
}
std::string_view nameOf(const Expression& node) {
    return nameOf(&node);
}

TEST(ExpressionTest, EachClassHasItsOperation) {
    std::span<ExpressionPtr> none;
    EXPECT_EQ(kindOf(*pName("a")), "get");
    EXPECT_EQ(kindOf(*pNode<QueryExpression>("v", pName("s"), pName("c"))), "query");
    EXPECT_EQ(kindOf(*pNode<EnumerationValueExpression>("T", "A")), "enumeration");
    EXPECT_EQ(kindOf(*pNode<LogicalValueExpression>(Logical::True)), "logical");
    EXPECT_EQ(kindOf(*pNode<DoubleValueExpression>(0.5)), "double");
    EXPECT_EQ(kindOf(*pNode<IntegerValueExpression>(1)), "integer");
    EXPECT_EQ(kindOf(*pNode<StringValueExpression>("s")), "string");
    EXPECT_EQ(kindOf(*pNode<RepetitionExpression>(pName("e"), pName("n"))), "repetition");
    EXPECT_EQ(kindOf(*pNode<AggregateInitializerExpression>(none)), "aggregate");
    EXPECT_EQ(kindOf(*pNode<IntervalExpression>(pName("a"), IntervalOperator::Less, pName("b"),
                                                IntervalOperator::Less, pName("c"))),
              "interval");
    EXPECT_EQ(kindOf(*pNode<FunctionCallExpression>("f", none)), "call");
    EXPECT_EQ(kindOf(*pNode<ConstantExpression>(Constant::Self)), "constant");
    EXPECT_EQ(kindOf(*pNode<BinaryExpression>(pName("a"), BinaryOperator::Add, pName("b"))), "binary");
    EXPECT_EQ(kindOf(*pNode<UnaryExpression>(UnaryOperator::Not, pName("a"))), "unary");
}

TEST(ExpressionTest, OperatorsHaveTheirOperands) {
    const UnaryExpression unary(UnaryOperator::Minus, pName("a"), nullptr);
    EXPECT_EQ(unary.getOperator(), UnaryOperator::Minus);
    EXPECT_EQ(nameOf(unary.getOperand()), "a");
    const BinaryExpression binary(pName("a"), BinaryOperator::In, pName("b"), nullptr);
    EXPECT_EQ(nameOf(binary.getLeft()), "a");
    EXPECT_EQ(binary.getOperator(), BinaryOperator::In);
    EXPECT_EQ(nameOf(binary.getRight()), "b");
    const IntervalExpression interval(pName("a"), IntervalOperator::LessOrEqual, pName("b"),
                                      IntervalOperator::Less, pName("c"), nullptr);
    EXPECT_EQ(nameOf(interval.getLow()), "a");
    EXPECT_EQ(interval.getLowOperator(), IntervalOperator::LessOrEqual);
    EXPECT_EQ(nameOf(interval.getItem()), "b");
    EXPECT_EQ(interval.getHighOperator(), IntervalOperator::Less);
    EXPECT_EQ(nameOf(interval.getHigh()), "c");
    const RepetitionExpression repetition(pName("e"), pName("n"), nullptr);
    EXPECT_EQ(nameOf(repetition.getElement()), "e");
    EXPECT_EQ(nameOf(repetition.getCount()), "n");
    const QueryExpression query("v", pName("s"), pName("c"), nullptr);
    EXPECT_EQ(query.getVariable(), "v");
    EXPECT_EQ(nameOf(query.getSource()), "s");
    EXPECT_EQ(nameOf(query.getCondition()), "c");
}

TEST(ExpressionTest, ValuesAreKept) {
    EXPECT_EQ(IntegerValueExpression(-7, nullptr).getValue(), -7);
    EXPECT_EQ(DoubleValueExpression(2.5, nullptr).getValue(), 2.5);
    EXPECT_EQ(LogicalValueExpression(Logical::Unknown, nullptr).getValue(), Logical::Unknown);
    EXPECT_EQ(ConstantExpression(Constant::Indeterminate, nullptr).getConstant(), Constant::Indeterminate);
}

TEST(ExpressionTest, QualifiersAndIndices) {
    const GetExpression plain("a", nullptr);
    EXPECT_EQ(plain.getQualifier(), Qualifier::None);
    EXPECT_EQ(plain.pBase(), nullptr);
    EXPECT_EQ(plain.pIndex(), nullptr);
    EXPECT_EQ(plain.pIndexEnd(), nullptr);
    const GetExpression group(Qualifier::Group, "g", pName("a"), nullptr);
    EXPECT_EQ(group.getQualifier(), Qualifier::Group);
    EXPECT_EQ(group.getName(), "g");
    EXPECT_EQ(nameOf(group.pBase()), "a");
    const GetExpression index(pName("i"), nullptr, pName("a"), nullptr);
    EXPECT_EQ(index.getQualifier(), Qualifier::Index);
    EXPECT_EQ(index.getName(), "");
    EXPECT_EQ(nameOf(index.pIndex()), "i");
    EXPECT_EQ(index.pIndexEnd(), nullptr);
    const GetExpression range(pName("i"), pName("j"), pName("a"), nullptr);
    EXPECT_EQ(nameOf(range.pIndexEnd()), "j");
    EXPECT_EQ(nameOf(range.pBase()), "a");
}

TEST(ExpressionTest, ANodeOnItsOwnHasTextsOfItsOwn) {
    std::string text("name");
    const GetExpression name(text, nullptr);
    const StringValueExpression value(text, nullptr);
    const FunctionCallExpression call(text, {}, nullptr);
    const QueryExpression query(text, pName("s"), pName("c"), nullptr);
    const EnumerationValueExpression item(std::string_view(text).substr(0, 2),
                                          std::string_view(text).substr(2), nullptr);
    const ExpressionText label(text, nullptr);
    text = "gone";
    EXPECT_EQ(name.getName(), "name");
    EXPECT_EQ(value.getValue(), "name");
    EXPECT_EQ(call.getName(), "name");
    EXPECT_EQ(query.getVariable(), "name");
    EXPECT_EQ(item.getTypeName(), "na");
    EXPECT_EQ(item.getValueName(), "me");
    EXPECT_EQ(label.getView(), "name");
}

TEST(ExpressionTest, EmptyTextsAreKept) {
    EXPECT_EQ(GetExpression("", nullptr).getName(), "");
    EXPECT_EQ(StringValueExpression({}, nullptr).getValue(), "");
    const EnumerationValueExpression item("", "A", nullptr);
    EXPECT_EQ(item.getTypeName(), "");
    EXPECT_EQ(item.getValueName(), "A");
}

// In a rule the value comes after the type; a host may hand over names from anywhere.
TEST(ExpressionTest, NamesOfAnEnumerationItemMayLieAnywhere) {
    kiv::Arena arena;
    constexpr std::string_view Rule = "Kind.SOLID";
    const auto type = Rule.substr(0, 4);
    const auto value = Rule.substr(5);
    const EnumerationValueExpression inOrder(type, value, &arena);
    EXPECT_EQ(inOrder.getTypeName(), "Kind");
    EXPECT_EQ(inOrder.getValueName(), "SOLID");
    EXPECT_EQ(inOrder.getTypeName().data(), type.data());
    const EnumerationValueExpression turned(value, type, &arena);
    EXPECT_EQ(turned.getTypeName(), "SOLID");
    EXPECT_EQ(turned.getValueName(), "Kind");
}

TEST(ExpressionTest, ListsTakeTheirNodesInOrder) {
    std::array<ExpressionPtr, 2> nodes{pName("a"), pName("b")};
    const AggregateInitializerExpression aggregate(nodes, nullptr);
    EXPECT_EQ(nodes[0], nullptr);
    const auto& elements = aggregate.getElements();
    EXPECT_EQ(elements.size(), 2U);
    EXPECT_EQ(nameOf(elements[0].get()), "a");
    EXPECT_EQ(nameOf(elements.at(1).get()), "b");
    EXPECT_THROW(elements.at(2), std::out_of_range);
    EXPECT_EQ(elements.end() - elements.begin(), 2);
    EXPECT_FALSE(elements.empty());
}

TEST(ExpressionTest, AnEmptyListHasNothing) {
    const FunctionCallExpression call("f", {}, nullptr);
    EXPECT_TRUE(call.getArguments().empty());
    EXPECT_EQ(call.getArguments().begin(), call.getArguments().end());
    EXPECT_THROW(call.getArguments().at(0), std::out_of_range);
}

TEST(ExpressionTest, ALabelMovesWithItsText) {
    ExpressionText label("WR1", nullptr);
    ExpressionText other(std::move(label));
    EXPECT_EQ(other, "WR1");
    ExpressionText third("WR2", nullptr);
    third = std::move(other);
    EXPECT_EQ(third, "WR1");
    EXPECT_EQ(third, ExpressionText("WR1", nullptr));
    EXPECT_FALSE(third == ExpressionText("WR", nullptr));
}

// A walk that calls itself for each of them would need more stack than there is.
TEST(ExpressionTest, LongChainsAreDestroyedStepByStep) {
    constexpr int Length = 300'000;
    auto sum = pName("a");
    for (int i = 0; i < Length; ++i)
        sum = pNode<BinaryExpression>(std::move(sum), BinaryOperator::Add, pName("b"));
    auto path = pName("a");
    for (int i = 0; i < Length; ++i)
        path = pNode<GetExpression>(Qualifier::Attribute, "b", std::move(path));
    auto indices = pName("a");
    for (int i = 0; i < Length; ++i)
        indices = pNode<GetExpression>(pName("i"), nullptr, std::move(indices));
    EXPECT_EQ(kindOf(*sum), "binary");
    EXPECT_EQ(kindOf(*path), "get");
    EXPECT_EQ(kindOf(*indices), "get");
}

} // namespace
