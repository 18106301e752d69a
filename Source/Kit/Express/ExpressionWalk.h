/// @file
/// Walks whole expression trees: a visitor whose operations go on to the children, so that a host overrides
/// only what it is looking for.
///
///     class CallCounter : public kiv::kit::ExpressionWalk {
///     public:
///         std::size_t count = 0;
///         using ExpressionWalk::visit;
///         void visit(const kiv::ifc::def::schema::FunctionCallExpression& node) override {
///             ++count;
///             ExpressionWalk::visit(node); // without this line its arguments are passed over
///         }
///     };
///     CallCounter counter;
///     counter.vWalk(*rule.expression);
///
/// Ownership: refers to the trees only while it walks.
/// Threads:   one thread at a time; several walks may go through one tree.
/// Errors:    std::bad_alloc, and what the host's operations throw, which ends the walk. Takes no stack
///            however deep a tree is.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Format/Ifc/Def/Schema/ExpressExpression.h"

#include <vector>

namespace kiv::kit {

class KIV_EXPORT ExpressionWalk : public ifc::def::schema::ExpressionVisitor {
public:
    ExpressionWalk();
    ~ExpressionWalk() override;
    ExpressionWalk(const ExpressionWalk&) = default;
    ExpressionWalk& operator=(const ExpressionWalk&) = default;

    /// Visits the expression and all below it, each node before its children and these from left to right.
    /// An operation may start a further walk, which is done when it returns.
    void vWalk(const ifc::def::schema::Expression& expression);

    // Each has the children of the node visited next, after it has returned.
    void visit(const ifc::def::schema::GetExpression& node) override;
    void visit(const ifc::def::schema::QueryExpression& node) override;
    void visit(const ifc::def::schema::EnumerationValueExpression& node) override;
    void visit(const ifc::def::schema::LogicalValueExpression& node) override;
    void visit(const ifc::def::schema::DoubleValueExpression& node) override;
    void visit(const ifc::def::schema::IntegerValueExpression& node) override;
    void visit(const ifc::def::schema::StringValueExpression& node) override;
    void visit(const ifc::def::schema::RepetitionExpression& node) override;
    void visit(const ifc::def::schema::AggregateInitializerExpression& node) override;
    void visit(const ifc::def::schema::IntervalExpression& node) override;
    void visit(const ifc::def::schema::FunctionCallExpression& node) override;
    void visit(const ifc::def::schema::ConstantExpression& node) override;
    void visit(const ifc::def::schema::BinaryExpression& node) override;
    void visit(const ifc::def::schema::UnaryExpression& node) override;

protected:
    /// Called when all that is visited below the node has been: where the variable of a QUERY ends, for
    /// example. Does nothing.
    virtual void vLeave(const ifc::def::schema::Expression& node);

private:
    struct Step {
        const ifc::def::schema::Expression* node;
        bool isLeft;
    };

    void vChildAdd(const ifc::def::schema::Expression* child);

    // What is to be done, the next step last.
    std::vector<Step> steps_;
};

} // namespace kiv::kit
