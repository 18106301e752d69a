#include "kiv/Kit/Express/ExpressionWalk.h"

#include "Support/SchemaFromText.h"
#include "kiv/Kit/Express/ExpressionText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace kiv::kit {

namespace {

using namespace ifc::def::schema;
using testing::ElementsAre;

/// The schema with a rule, which may name the enumeration Kind.
std::unique_ptr<Schema> schemaWithRule(const std::string& expression) {
    return kiv::test::schemaFromText("TYPE Kind = ENUMERATION OF (SOLID);\nEND_TYPE;\n"
                                     "ENTITY Wall;\n WHERE\n  R : " +
                                     expression + ";\nEND_ENTITY;");
}

const Expression& ruleOf(const Schema& schema) {
    const auto& rules = kiv::test::entityOf(schema, "Wall").pWhere()->getRules();
    if (rules.size() != 1)
        throw std::logic_error("no rule");
    return *rules[0].expression;
}

/// Lists what is visited, and with ")" what is left.
class Listing final : public ExpressionWalk {
public:
    std::vector<std::string> entered;
    std::vector<std::string> left;

    void visit(const GetExpression& node) override { vEnter(node); }
    void visit(const QueryExpression& node) override { vEnter(node); }
    void visit(const EnumerationValueExpression& node) override { vEnter(node); }
    void visit(const LogicalValueExpression& node) override { vEnter(node); }
    void visit(const DoubleValueExpression& node) override { vEnter(node); }
    void visit(const IntegerValueExpression& node) override { vEnter(node); }
    void visit(const StringValueExpression& node) override { vEnter(node); }
    void visit(const RepetitionExpression& node) override { vEnter(node); }
    void visit(const AggregateInitializerExpression& node) override { vEnter(node); }
    void visit(const IntervalExpression& node) override { vEnter(node); }
    void visit(const FunctionCallExpression& node) override { vEnter(node); }
    void visit(const ConstantExpression& node) override { vEnter(node); }
    void visit(const BinaryExpression& node) override { vEnter(node); }
    void visit(const UnaryExpression& node) override { vEnter(node); }

protected:
    void vLeave(const Expression& node) override { left.push_back(sExpression(node)); }

private:
    template <class Node>
    void vEnter(const Node& node) {
        entered.push_back(sExpression(node));
        ExpressionWalk::visit(node);
    }
};

TEST(ExpressionWalk, EveryNodeComesBeforeItsChildrenFromLeftToRight) {
    struct Row {
        const char* expression;
        std::vector<std::string> entered;
    };
    const Row rows[] = {
        {"-a", {"-a", "a"}},
        {"a - b - 1", {"a - b - 1", "a - b", "a", "b", "1"}},
        {"{0.5 <= a < ?}", {"{0.5 <= a < ?}", "0.5", "a", "?"}},
        {"f(a, 'x')", {"f(a, 'x')", "a", "'x'"}},
        {"[TRUE:2, Kind.SOLID]", {"[TRUE:2, Kind.SOLID]", "TRUE:2", "TRUE", "2", "Kind.SOLID"}},
        {"QUERY(x <* a | x > 1)", {"QUERY(x <* a | x > 1)", "a", "x > 1", "x", "1"}},
        {"SELF\\Wall.a[b:c]", {"SELF\\Wall.a[b:c]", "SELF\\Wall.a", "SELF\\Wall", "SELF", "b", "c"}},
    };
    for (const auto& row : rows) {
        const auto schema = schemaWithRule(row.expression);
        Listing listing;
        listing.vWalk(ruleOf(*schema));
        EXPECT_EQ(listing.entered, row.entered);
    }
}

TEST(ExpressionWalk, NodeIsLeftAfterAllBelowIt) {
    const auto schema = schemaWithRule("a + f(b)");
    Listing listing;
    listing.vWalk(ruleOf(*schema));
    EXPECT_THAT(listing.left, ElementsAre("a", "b", "f(b)", "a + f(b)"));
}

/// Counts names, but for those in calls.
class NameCounter final : public ExpressionWalk {
public:
    std::size_t count = 0;

    using ExpressionWalk::visit;
    void visit(const GetExpression& node) override {
        ++count;
        ExpressionWalk::visit(node);
    }
    void visit(const FunctionCallExpression& /*node*/) override {}
};

TEST(ExpressionWalk, OperationThatDoesNotGoOnPassesOverTheChildren) {
    const auto schema = schemaWithRule("a + f(b, c) = d");
    NameCounter counter;
    counter.vWalk(ruleOf(*schema));
    EXPECT_EQ(counter.count, 2U);
}

TEST(ExpressionWalk, LongChainsTakeNoStack) {
    std::string sum = "a";
    std::string path = "a";
    for (int link = 0; link < 200'000; ++link) {
        sum += "+a";
        path += ".a";
    }
    for (const auto& expression : {sum, path}) {
        const auto schema = schemaWithRule(expression + " = 1");
        NameCounter counter;
        counter.vWalk(ruleOf(*schema));
        EXPECT_EQ(counter.count, 200'001U);
    }
}

/// Walks the source of each query on its own first.
class InnerWalk final : public ExpressionWalk {
public:
    std::vector<std::string> names;

    using ExpressionWalk::visit;
    void visit(const QueryExpression& node) override {
        vWalk(node.getSource());
        ExpressionWalk::visit(node);
    }
    void visit(const GetExpression& node) override { names.emplace_back(node.getName()); }
};

TEST(ExpressionWalk, OperationMayWalkAgain) {
    const auto schema = schemaWithRule("QUERY(x <* a | b) = c");
    InnerWalk walk;
    walk.vWalk(ruleOf(*schema));
    EXPECT_THAT(walk.names, ElementsAre("a", "a", "b", "c"));
}

} // namespace

} // namespace kiv::kit
