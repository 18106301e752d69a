#include "kiv/Format/Ifc/Def/Schema/ExpressExpression.h"

#include "Base/Arena.h"

#include <stdexcept>
#include <utility>

namespace kiv::ifc::def::schema {

Expression::~Expression() = default;

ExpressionPtr Expression::pChainTake() {
    return nullptr;
}

void Expression::vChainDestroy(ExpressionPtr node) {
    // Each node is destroyed when the next one has been taken out of it.
    while (node)
        node = node->pChainTake();
}

ExpressionText::ExpressionText(std::string_view text, const Arena* arena) : view_(text) {
    if (arena)
        return;
    own_ = std::make_unique_for_overwrite<char[]>(text.size());
    text.copy(own_.get(), text.size());
    view_ = {own_.get(), text.size()};
}

ExpressionList::ExpressionList(std::span<ExpressionPtr> nodes, Arena* arena) {
    ExpressionPtr* place = nullptr;
    if (arena) {
        // Never destroyed, as the nodes lie in the arena too.
        place = static_cast<ExpressionPtr*>(arena->pAllocateFor<ExpressionPtr>(nodes.size()));
        std::uninitialized_default_construct_n(place, nodes.size());
    } else {
        own_ = std::make_unique<ExpressionPtr[]>(nodes.size());
        place = own_.get();
    }
    std::move(nodes.begin(), nodes.end(), place);
    nodes_ = {place, nodes.size()};
}

const ExpressionPtr& ExpressionList::at(std::size_t index) const {
    if (index >= nodes_.size())
        throw std::out_of_range("no such expression");
    return nodes_[index];
}

UnaryExpression::UnaryExpression(UnaryOperator op, ExpressionPtr operand, Arena* arena) :
    ExpressionOf(arena), operator_(op), operand_(std::move(operand)) {}

BinaryExpression::BinaryExpression(ExpressionPtr left, BinaryOperator op, ExpressionPtr right, Arena* arena) :
    ExpressionOf(arena), left_(std::move(left)), operator_(op), right_(std::move(right)) {}
BinaryExpression::~BinaryExpression() {
    vChainDestroy(std::move(left_));
}
ExpressionPtr BinaryExpression::pChainTake() {
    return std::move(left_);
}

ConstantExpression::ConstantExpression(Constant constant, Arena* arena) :
    ExpressionOf(arena), constant_(constant) {}

FunctionCallExpression::FunctionCallExpression(std::string_view name, std::span<ExpressionPtr> arguments,
                                               Arena* arena) :
    ExpressionOf(arena), name_(name, arena), arguments_(arguments, arena) {}

IntervalExpression::IntervalExpression(ExpressionPtr low, IntervalOperator lowOperator, ExpressionPtr item,
                                       IntervalOperator highOperator, ExpressionPtr high, Arena* arena) :
    ExpressionOf(arena),
    low_(std::move(low)),
    item_(std::move(item)),
    high_(std::move(high)),
    lowOperator_(lowOperator),
    highOperator_(highOperator) {}

AggregateInitializerExpression::AggregateInitializerExpression(std::span<ExpressionPtr> elements,
                                                               Arena* arena) :
    ExpressionOf(arena), elements_(elements, arena) {}

RepetitionExpression::RepetitionExpression(ExpressionPtr element, ExpressionPtr count, Arena* arena) :
    ExpressionOf(arena), element_(std::move(element)), count_(std::move(count)) {}

IntegerValueExpression::IntegerValueExpression(int value, Arena* arena) :
    ExpressionOf(arena), value_(value) {}

DoubleValueExpression::DoubleValueExpression(double value, Arena* arena) :
    ExpressionOf(arena), value_(value) {}

StringValueExpression::StringValueExpression(std::string_view value, Arena* arena) :
    ExpressionOf(arena), value_(value, arena) {}

LogicalValueExpression::LogicalValueExpression(Logical value, Arena* arena) :
    ExpressionOf(arena), value_(value) {}

EnumerationValueExpression::EnumerationValueExpression(std::string_view typeName, std::string_view valueName,
                                                       Arena* arena) :
    ExpressionOf(arena), typeName_(typeName, arena), valueName_(valueName, arena) {}

QueryExpression::QueryExpression(std::string_view variable, ExpressionPtr source, ExpressionPtr condition,
                                 Arena* arena) :
    ExpressionOf(arena),
    variable_(variable, arena),
    source_(std::move(source)),
    condition_(std::move(condition)) {}

GetExpression::GetExpression(std::string_view name, Arena* arena) :
    GetExpression(Qualifier::None, name, nullptr, arena) {}
GetExpression::GetExpression(Qualifier qualifier, std::string_view name, ExpressionPtr base, Arena* arena) :
    ExpressionOf(arena), qualifier_(qualifier), name_(name, arena), base_(std::move(base)) {}
GetExpression::GetExpression(ExpressionPtr index, ExpressionPtr indexEnd, ExpressionPtr base, Arena* arena) :
    ExpressionOf(arena),
    qualifier_(Qualifier::Index),
    name_({}, arena),
    index_(std::move(index)),
    indexEnd_(std::move(indexEnd)),
    base_(std::move(base)) {}
GetExpression::~GetExpression() {
    vChainDestroy(std::move(base_));
}
ExpressionPtr GetExpression::pChainTake() {
    return std::move(base_);
}

ExpressionVisitor::~ExpressionVisitor() = default;

} // namespace kiv::ifc::def::schema
