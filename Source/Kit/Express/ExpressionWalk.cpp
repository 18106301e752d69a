#include "kiv/Kit/Express/ExpressionWalk.h"

#include <cstddef>
#include <utility>

namespace kiv::kit {

using namespace ifc::def::schema;

ExpressionWalk::ExpressionWalk() = default;
ExpressionWalk::~ExpressionWalk() = default;

void ExpressionWalk::vWalk(const Expression& expression) {
    // Steps of a walk that this one interrupts, or that an exception ended, are not this one's.
    auto before = std::exchange(steps_, {});
    steps_.push_back({&expression, false});
    while (!steps_.empty()) {
        const auto step = steps_.back();
        steps_.pop_back();
        if (step.isLeft) {
            vLeave(*step.node);
            continue;
        }
        steps_.push_back({step.node, true});
        step.node->accept(*this);
    }
    steps_ = std::move(before);
}

void ExpressionWalk::vLeave(const Expression& /*node*/) {}

/// The last child is added first.
void ExpressionWalk::vChildAdd(const Expression* child) {
    if (child)
        steps_.push_back({child, false});
}

void ExpressionWalk::visit(const GetExpression& node) {
    vChildAdd(node.pIndexEnd());
    vChildAdd(node.pIndex());
    vChildAdd(node.pBase());
}

void ExpressionWalk::visit(const QueryExpression& node) {
    vChildAdd(&node.getCondition());
    vChildAdd(&node.getSource());
}

void ExpressionWalk::visit(const RepetitionExpression& node) {
    vChildAdd(&node.getCount());
    vChildAdd(&node.getElement());
}

void ExpressionWalk::visit(const AggregateInitializerExpression& node) {
    const auto& elements = node.getElements();
    for (auto left = elements.size(); left > 0; --left)
        vChildAdd(elements[left - 1].get());
}

void ExpressionWalk::visit(const IntervalExpression& node) {
    vChildAdd(&node.getHigh());
    vChildAdd(&node.getItem());
    vChildAdd(&node.getLow());
}

void ExpressionWalk::visit(const FunctionCallExpression& node) {
    const auto& arguments = node.getArguments();
    for (auto left = arguments.size(); left > 0; --left)
        vChildAdd(arguments[left - 1].get());
}

void ExpressionWalk::visit(const BinaryExpression& node) {
    vChildAdd(&node.getRight());
    vChildAdd(&node.getLeft());
}

void ExpressionWalk::visit(const UnaryExpression& node) {
    vChildAdd(&node.getOperand());
}

// These have no children.
void ExpressionWalk::visit(const EnumerationValueExpression& /*node*/) {}
void ExpressionWalk::visit(const LogicalValueExpression& /*node*/) {}
void ExpressionWalk::visit(const DoubleValueExpression& /*node*/) {}
void ExpressionWalk::visit(const IntegerValueExpression& /*node*/) {}
void ExpressionWalk::visit(const StringValueExpression& /*node*/) {}
void ExpressionWalk::visit(const ConstantExpression& /*node*/) {}

} // namespace kiv::kit
