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
#include <utility>

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

    /// The text of a node: in an arena that of the rule, which lives as long, else a copy, which the node
    /// gives to `vTextDestroy` in the end.
    static const char* pTextKept(std::string_view text, const Arena* arena);
    void vTextDestroy(const char* text) const noexcept {
        if (!isInArena_)
            delete[] text;
    }

    /// Destroys the leftmost chain below a node one by one: it is as long as the text likes, too long to
    /// recurse on.
    static void vChainDestroy(ExpressionPtr node);

    bool isInArena() const { return isInArena_; }

private:
    friend struct ExpressionDelete;

    /// Hands over the child that continues the leftmost chain; null in nodes that end it.
    virtual ExpressionPtr pChainTake();

    // Last, so that small members of derived classes fill the padding that follows.
    bool isInArena_;
};

inline void ExpressionDelete::operator()(Expression* node) const noexcept {
    if (!node->isInArena_)
        delete node;
}

/// The label of a rule: its own text, or in an arena that of the rule, which lives as long.
class KIV_EXPORT ExpressionText {
public:
    ExpressionText(std::string_view text, const Arena* arena);
    ExpressionText(ExpressionText&& other) noexcept :
        text_(std::exchange(other.text_, nullptr)),
        size_(std::exchange(other.size_, 0)),
        isOwn_(other.isOwn_) {}
    ExpressionText& operator=(ExpressionText&& other) noexcept {
        std::swap(text_, other.text_);
        std::swap(size_, other.size_);
        std::swap(isOwn_, other.isOwn_);
        return *this;
    }
    ~ExpressionText() {
        if (isOwn_)
            delete[] text_;
    }

    std::string_view getView() const { return {text_, size_}; }
    // A text is used where a view is. NOLINTNEXTLINE(google-explicit-constructor)
    operator std::string_view() const { return getView(); }

    friend bool operator==(const ExpressionText& left, const ExpressionText& right) {
        return left.getView() == right.getView();
    }
    friend bool operator==(const ExpressionText& text, std::string_view other) {
        return text.getView() == other;
    }

private:
    const char* text_;
    std::uint32_t size_;
    bool isOwn_;
};

/// The children of a node that may have any number of them, none of them null.
class KIV_EXPORT ExpressionList {
public:
    /// Takes the nodes.
    ExpressionList(std::span<ExpressionPtr> nodes, Arena* arena);
    ExpressionList(const ExpressionList&) = delete;
    ExpressionList& operator=(const ExpressionList&) = delete;
    ~ExpressionList() {
        if (isOwn_)
            delete[] nodes_;
    }

    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    const ExpressionPtr* begin() const { return nodes_; }
    const ExpressionPtr* end() const { return nodes_ + size_; }
    const ExpressionPtr& operator[](std::size_t index) const { return nodes_[index]; }
    /// Throws std::out_of_range when there is no such node.
    const ExpressionPtr& at(std::size_t index) const;

private:
    ExpressionPtr* nodes_;
    std::uint32_t size_;
    bool isOwn_;
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

    BinaryOperator operator_;
    ExpressionPtr left_;
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
    ~FunctionCallExpression() override;

    std::string_view getName() const { return {name_, nameSize_}; }
    const ExpressionList& getArguments() const { return arguments_; }

private:
    std::uint32_t nameSize_;
    ExpressionList arguments_;
    const char* name_;
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
    IntervalOperator lowOperator_;
    IntervalOperator highOperator_;
    ExpressionPtr low_;
    ExpressionPtr item_;
    ExpressionPtr high_;
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
    ~StringValueExpression() override;

    std::string_view getValue() const { return {value_, valueSize_}; }

private:
    std::uint32_t valueSize_;
    const char* value_;
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
    ~EnumerationValueExpression() override;

    std::string_view getTypeName() const { return {typeName_, typeNameSize_}; }
    std::string_view getValueName() const { return {typeName_ + valueNamePos_, valueNameSize_}; }

private:
    std::uint32_t typeNameSize_;
    // Where the type name begins; the value name lies `valueNamePos_` bytes further on.
    const char* typeName_;
    std::uint32_t valueNamePos_;
    std::uint32_t valueNameSize_;
};

/// QUERY(variable <* source | condition)
class KIV_EXPORT QueryExpression final : public ExpressionOf<QueryExpression> {
public:
    QueryExpression(std::string_view variable, ExpressionPtr source, ExpressionPtr condition, Arena* arena);
    ~QueryExpression() override;

    std::string_view getVariable() const { return {variable_, variableSize_}; }
    const Expression& getSource() const { return *source_; }
    const Expression& getCondition() const { return *condition_; }

private:
    std::uint32_t variableSize_;
    ExpressionPtr source_;
    ExpressionPtr condition_;
    const char* variable_;
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

    Qualifier getQualifier() const { return static_cast<Qualifier>(qualifier_); }
    /// Empty for an index.
    std::string_view getName() const {
        return isIndex_ ? std::string_view() : std::string_view(name_, nameSize_);
    }
    /// Null unless the qualifier is an index.
    const Expression* pIndex() const { return isIndex_ ? index_->first.get() : nullptr; }
    /// Null unless the index has a part after ':'.
    const Expression* pIndexEnd() const { return isIndex_ ? index_->last.get() : nullptr; }
    /// What is qualified; null for a plain reference.
    const Expression* pBase() const { return base_.get(); }

private:
    struct Index {
        ExpressionPtr first;
        ExpressionPtr last;
    };

    static Index* pIndexMake(ExpressionPtr first, ExpressionPtr last, Arena* arena);
    ExpressionPtr pChainTake() override;

    // Half of all nodes are of this class, most of them names, so that it holds nothing that these do not
    // need.
    std::uint8_t qualifier_;
    // Made of an index.
    bool isIndex_;
    std::uint32_t nameSize_;
    ExpressionPtr base_;
    union {
        const char* name_;
        Index* index_;
    };
};

/// A rule of a WHERE clause.
struct ParsedRule {
    /// Lives as long as the rule.
    ExpressionText label;
    ExpressionPtr expression;
};

} // namespace kiv::ifc::def::schema
