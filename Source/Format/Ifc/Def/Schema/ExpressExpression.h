/// @file
/// Expression trees of WHERE rules: 14 node classes and the visitor that has an operation for each.
///
///     struct NamePrinter : ExpressionVisitor { ... };
///     rule.expression->accept(printer);
///
/// Ownership: every node owns its children; destroying a node destroys its subtree, however long its chains
///            of operators are. The trees of a schema lie in the schema's memory and are gone with it.
/// Threads:   read-only once built.
/// Errors:    none.
#pragma once

#include "kiv/Base/Export.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

namespace kiv {
class Arena;
}

namespace kiv::ifc::def::schema {

class Expression;
class ExpressionVisitor;

/// Destroys a tree that is on its own; one that lies in an arena goes with the arena, without a walk.
struct KIV_EXPORT ExpressionDelete {
    void operator()(Expression* node) const noexcept;
};

using ExpressionPtr = std::unique_ptr<Expression, ExpressionDelete>;

/// Base of all nodes. The constructors of nodes take the arena that the node is being made in, null when it
/// is on its own.
class KIV_EXPORT Expression {
public:
    Expression(const Expression&) = delete;
    Expression& operator=(const Expression&) = delete;
    virtual ~Expression();

    /// Calls the visitor's operation for this node's class.
    virtual void accept(ExpressionVisitor& visitor) const = 0;

protected:
    explicit Expression(const Arena* arena) : isInArena_(arena != nullptr) {}

    /// Destroys the leftmost chain below a node one by one: it is as long as the text likes, too long to
    /// recurse on.
    static void vChainDestroy(ExpressionPtr node);

private:
    friend struct ExpressionDelete;

    /// Hands over the child that continues the leftmost chain; null in nodes that end it.
    virtual ExpressionPtr pChainTake();

    bool isInArena_;
};

inline void ExpressionDelete::operator()(Expression* node) const noexcept {
    if (!node->isInArena_)
        delete node;
}

/// The text of a node or the label of a rule: its own, or in an arena that of the rule, which lives as long.
class KIV_EXPORT ExpressionText {
public:
    ExpressionText(std::string_view text, const Arena* arena);

    std::string_view getView() const { return view_; }
    // A text is used where a view is. NOLINTNEXTLINE(google-explicit-constructor)
    operator std::string_view() const { return view_; }

    friend bool operator==(const ExpressionText& left, const ExpressionText& right) {
        return left.view_ == right.view_;
    }
    friend bool operator==(const ExpressionText& text, std::string_view other) { return text.view_ == other; }

private:
    std::unique_ptr<char[]> own_;
    std::string_view view_;
};

/// The children of a node that may have any number of them, none of them null.
class KIV_EXPORT ExpressionList {
public:
    /// Takes the nodes.
    ExpressionList(std::span<ExpressionPtr> nodes, Arena* arena);

    std::size_t size() const { return nodes_.size(); }
    bool empty() const { return nodes_.empty(); }
    const ExpressionPtr* begin() const { return nodes_.data(); }
    const ExpressionPtr* end() const { return nodes_.data() + nodes_.size(); }
    const ExpressionPtr& operator[](std::size_t index) const { return nodes_[index]; }
    /// Throws std::out_of_range when there is no such node.
    const ExpressionPtr& at(std::size_t index) const;

private:
    std::unique_ptr<ExpressionPtr[]> own_;
    std::span<const ExpressionPtr> nodes_;
};

enum class UnaryOperator : std::uint32_t { Plus = 0, Minus = 1, Not = 2 };

/// OR and || are one operator in the tree.
enum class BinaryOperator : std::uint32_t {
    Add = 0,
    Subtract = 1,
    Multiply = 2,
    Divide = 3,
    And = 4,
    Or = 5,
    Xor = 6,
    Mod = 7,
    Power = 8,
    Equal = 9,
    NotEqual = 10,
    InstanceEqual = 11,
    InstanceNotEqual = 12,
    Less = 13,
    Greater = 14,
    LessOrEqual = 15,
    GreaterOrEqual = 16,
    In = 17
};

enum class IntervalOperator : std::uint32_t { Less = 0, LessOrEqual = 1 };

/// SELF, or "?" for the indeterminate value.
enum class Constant : std::uint32_t { Self = 0, Indeterminate = 1 };

enum class Logical : std::uint32_t { True = 0, False = 1, Unknown = 2 };

/// What a `GetExpression` is: a name of its own, or what qualifies its base.
enum class Qualifier : std::uint32_t { None = 0, Group = 1, Attribute = 2, Index = 3 };

class UnaryExpression;
class BinaryExpression;
class ConstantExpression;
class FunctionCallExpression;
class IntervalExpression;
class AggregateInitializerExpression;
class RepetitionExpression;
class IntegerValueExpression;
class DoubleValueExpression;
class StringValueExpression;
class LogicalValueExpression;
class EnumerationValueExpression;
class QueryExpression;
class GetExpression;

/// One operation per node class.
class KIV_EXPORT ExpressionVisitor {
public:
    virtual ~ExpressionVisitor();

    virtual void visit(const GetExpression& node) = 0;
    virtual void visit(const QueryExpression& node) = 0;
    virtual void visit(const EnumerationValueExpression& node) = 0;
    virtual void visit(const LogicalValueExpression& node) = 0;
    virtual void visit(const DoubleValueExpression& node) = 0;
    virtual void visit(const IntegerValueExpression& node) = 0;
    virtual void visit(const StringValueExpression& node) = 0;
    virtual void visit(const RepetitionExpression& node) = 0;
    virtual void visit(const AggregateInitializerExpression& node) = 0;
    virtual void visit(const IntervalExpression& node) = 0;
    virtual void visit(const FunctionCallExpression& node) = 0;
    virtual void visit(const ConstantExpression& node) = 0;
    virtual void visit(const BinaryExpression& node) = 0;
    virtual void visit(const UnaryExpression& node) = 0;
};

/// What all node classes have in common. `Node` is the class itself.
template <class Node>
class ExpressionOf : public Expression {
public:
    void accept(ExpressionVisitor& visitor) const final { visitor.visit(static_cast<const Node&>(*this)); }

protected:
    explicit ExpressionOf(const Arena* arena) : Expression(arena) {}
};

/// A prefix operator and its operand.
class KIV_EXPORT UnaryExpression final : public ExpressionOf<UnaryExpression> {
public:
    UnaryExpression(UnaryOperator op, ExpressionPtr operand, Arena* arena);

    UnaryOperator getOperator() const { return operator_; }
    const Expression& getOperand() const { return *operand_; }

private:
    UnaryOperator operator_;
    ExpressionPtr operand_;
};

/// left operator right. Chains of operators grow to the left.
class KIV_EXPORT BinaryExpression final : public ExpressionOf<BinaryExpression> {
public:
    BinaryExpression(ExpressionPtr left, BinaryOperator op, ExpressionPtr right, Arena* arena);
    ~BinaryExpression() override;

    const Expression& getLeft() const { return *left_; }
    BinaryOperator getOperator() const { return operator_; }
    const Expression& getRight() const { return *right_; }

private:
    ExpressionPtr pChainTake() override;

    ExpressionPtr left_;
    BinaryOperator operator_;
    ExpressionPtr right_;
};

class KIV_EXPORT ConstantExpression final : public ExpressionOf<ConstantExpression> {
public:
    ConstantExpression(Constant constant, Arena* arena);

    Constant getConstant() const { return constant_; }

private:
    Constant constant_;
};

/// name(arguments)
class KIV_EXPORT FunctionCallExpression final : public ExpressionOf<FunctionCallExpression> {
public:
    FunctionCallExpression(std::string_view name, std::span<ExpressionPtr> arguments, Arena* arena);

    std::string_view getName() const { return name_.getView(); }
    const ExpressionList& getArguments() const { return arguments_; }

private:
    ExpressionText name_;
    ExpressionList arguments_;
};

/// {low operator item operator high}
class KIV_EXPORT IntervalExpression final : public ExpressionOf<IntervalExpression> {
public:
    IntervalExpression(ExpressionPtr low, IntervalOperator lowOperator, ExpressionPtr item,
                       IntervalOperator highOperator, ExpressionPtr high, Arena* arena);

    const Expression& getLow() const { return *low_; }
    const Expression& getItem() const { return *item_; }
    const Expression& getHigh() const { return *high_; }
    IntervalOperator getLowOperator() const { return lowOperator_; }
    IntervalOperator getHighOperator() const { return highOperator_; }

private:
    ExpressionPtr low_;
    ExpressionPtr item_;
    ExpressionPtr high_;
    IntervalOperator lowOperator_;
    IntervalOperator highOperator_;
};

/// [elements]
class KIV_EXPORT AggregateInitializerExpression final : public ExpressionOf<AggregateInitializerExpression> {
public:
    AggregateInitializerExpression(std::span<ExpressionPtr> elements, Arena* arena);

    const ExpressionList& getElements() const { return elements_; }

private:
    ExpressionList elements_;
};

/// element : count, inside an aggregate initialiser
class KIV_EXPORT RepetitionExpression final : public ExpressionOf<RepetitionExpression> {
public:
    RepetitionExpression(ExpressionPtr element, ExpressionPtr count, Arena* arena);

    const Expression& getElement() const { return *element_; }
    const Expression& getCount() const { return *count_; }

private:
    ExpressionPtr element_;
    ExpressionPtr count_;
};

class KIV_EXPORT IntegerValueExpression final : public ExpressionOf<IntegerValueExpression> {
public:
    IntegerValueExpression(int value, Arena* arena);

    int getValue() const { return value_; }

private:
    int value_;
};

class KIV_EXPORT DoubleValueExpression final : public ExpressionOf<DoubleValueExpression> {
public:
    DoubleValueExpression(double value, Arena* arena);

    double getValue() const { return value_; }

private:
    double value_;
};

/// A string literal, without its quotes.
class KIV_EXPORT StringValueExpression final : public ExpressionOf<StringValueExpression> {
public:
    StringValueExpression(std::string_view value, Arena* arena);

    std::string_view getValue() const { return value_.getView(); }

private:
    ExpressionText value_;
};

class KIV_EXPORT LogicalValueExpression final : public ExpressionOf<LogicalValueExpression> {
public:
    LogicalValueExpression(Logical value, Arena* arena);

    Logical getValue() const { return value_; }

private:
    Logical value_;
};

/// TypeName.ValueName
class KIV_EXPORT EnumerationValueExpression final : public ExpressionOf<EnumerationValueExpression> {
public:
    EnumerationValueExpression(std::string_view typeName, std::string_view valueName, Arena* arena);

    std::string_view getTypeName() const { return typeName_.getView(); }
    std::string_view getValueName() const { return valueName_.getView(); }

private:
    ExpressionText typeName_;
    ExpressionText valueName_;
};

/// QUERY(variable <* source | condition)
class KIV_EXPORT QueryExpression final : public ExpressionOf<QueryExpression> {
public:
    QueryExpression(std::string_view variable, ExpressionPtr source, ExpressionPtr condition, Arena* arena);

    std::string_view getVariable() const { return variable_.getView(); }
    const Expression& getSource() const { return *source_; }
    const Expression& getCondition() const { return *condition_; }

private:
    ExpressionText variable_;
    ExpressionPtr source_;
    ExpressionPtr condition_;
};

/// A name, or a base qualified by "\name", ".name", "[index]" or "[index:indexEnd]". Chains grow to the left.
class KIV_EXPORT GetExpression final : public ExpressionOf<GetExpression> {
public:
    /// A plain reference to an attribute, a variable or a constant.
    GetExpression(std::string_view name, Arena* arena);
    /// A group or attribute qualifier.
    GetExpression(Qualifier qualifier, std::string_view name, ExpressionPtr base, Arena* arena);
    /// An index; `indexEnd` may be null.
    GetExpression(ExpressionPtr index, ExpressionPtr indexEnd, ExpressionPtr base, Arena* arena);
    ~GetExpression() override;

    Qualifier getQualifier() const { return qualifier_; }
    /// Empty for an index.
    std::string_view getName() const { return name_.getView(); }
    /// Null unless the qualifier is an index.
    const Expression* pIndex() const { return index_.get(); }
    /// Null unless the index has a part after ':'.
    const Expression* pIndexEnd() const { return indexEnd_.get(); }
    /// What is qualified; null for a plain reference.
    const Expression* pBase() const { return base_.get(); }

private:
    ExpressionPtr pChainTake() override;

    Qualifier qualifier_;
    ExpressionText name_;
    ExpressionPtr index_;
    ExpressionPtr indexEnd_;
    ExpressionPtr base_;
};

/// A rule of a WHERE clause.
struct ParsedRule {
    /// Lives as long as the rule.
    ExpressionText label;
    ExpressionPtr expression;
};

} // namespace kiv::ifc::def::schema
