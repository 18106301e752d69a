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
    Expression(arena), operator_(op), operand_(std::move(operand)) {}
UnaryExpression::~UnaryExpression() = default;
void UnaryExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}

BinaryExpression::BinaryExpression(ExpressionPtr left, BinaryOperator op, ExpressionPtr right, Arena* arena) :
    Expression(arena), left_(std::move(left)), operator_(op), right_(std::move(right)) {}
BinaryExpression::~BinaryExpression() {
    vChainDestroy(std::move(left_));
}
void BinaryExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}
ExpressionPtr BinaryExpression::pChainTake() {
    return std::move(left_);
}

ConstantExpression::ConstantExpression(Constant constant, Arena* arena) :
    Expression(arena), constant_(constant) {}
ConstantExpression::~ConstantExpression() = default;
void ConstantExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}

FunctionCallExpression::FunctionCallExpression(std::string_view name, std::span<ExpressionPtr> arguments,
                                               Arena* arena) :
    Expression(arena), name_(name, arena), arguments_(arguments, arena) {}
FunctionCallExpression::~FunctionCallExpression() = default;
void FunctionCallExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}

IntervalExpression::IntervalExpression(ExpressionPtr low, IntervalOperator lowOperator, ExpressionPtr item,
                                       IntervalOperator highOperator, ExpressionPtr high, Arena* arena) :
    Expression(arena),
    low_(std::move(low)),
    item_(std::move(item)),
    high_(std::move(high)),
    lowOperator_(lowOperator),
    highOperator_(highOperator) {}
IntervalExpression::~IntervalExpression() = default;
void IntervalExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}

AggregateInitializerExpression::AggregateInitializerExpression(std::span<ExpressionPtr> elements,
                                                               Arena* arena) :
    Expression(arena), elements_(elements, arena) {}
AggregateInitializerExpression::~AggregateInitializerExpression() = default;
void AggregateInitializerExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}

RepetitionExpression::RepetitionExpression(ExpressionPtr element, ExpressionPtr count, Arena* arena) :
    Expression(arena), element_(std::move(element)), count_(std::move(count)) {}
RepetitionExpression::~RepetitionExpression() = default;
void RepetitionExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}

IntegerValueExpression::IntegerValueExpression(int value, Arena* arena) : Expression(arena), value_(value) {}
IntegerValueExpression::~IntegerValueExpression() = default;
void IntegerValueExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}

DoubleValueExpression::DoubleValueExpression(double value, Arena* arena) : Expression(arena), value_(value) {}
DoubleValueExpression::~DoubleValueExpression() = default;
void DoubleValueExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}

StringValueExpression::StringValueExpression(std::string_view value, Arena* arena) :
    Expression(arena), value_(value, arena) {}
StringValueExpression::~StringValueExpression() = default;
void StringValueExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}

LogicalValueExpression::LogicalValueExpression(Logical value, Arena* arena) :
    Expression(arena), value_(value) {}
LogicalValueExpression::~LogicalValueExpression() = default;
void LogicalValueExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}

EnumerationValueExpression::EnumerationValueExpression(std::string_view typeName, std::string_view valueName,
                                                       Arena* arena) :
    Expression(arena), typeName_(typeName, arena), valueName_(valueName, arena) {}
EnumerationValueExpression::~EnumerationValueExpression() = default;
void EnumerationValueExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}

QueryExpression::QueryExpression(std::string_view variable, ExpressionPtr source, ExpressionPtr condition,
                                 Arena* arena) :
    Expression(arena),
    variable_(variable, arena),
    source_(std::move(source)),
    condition_(std::move(condition)) {}
QueryExpression::~QueryExpression() = default;
void QueryExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}

GetExpression::GetExpression(std::string_view name, Arena* arena) :
    GetExpression(Qualifier::None, name, nullptr, arena) {}
GetExpression::GetExpression(Qualifier qualifier, std::string_view name, ExpressionPtr base, Arena* arena) :
    Expression(arena), qualifier_(qualifier), name_(name, arena), base_(std::move(base)) {}
GetExpression::GetExpression(ExpressionPtr index, ExpressionPtr indexEnd, ExpressionPtr base, Arena* arena) :
    Expression(arena),
    qualifier_(Qualifier::Index),
    name_({}, arena),
    index_(std::move(index)),
    indexEnd_(std::move(indexEnd)),
    base_(std::move(base)) {}
GetExpression::~GetExpression() {
    vChainDestroy(std::move(base_));
}
void GetExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}
ExpressionPtr GetExpression::pChainTake() {
    return std::move(base_);
}

ExpressionVisitor::~ExpressionVisitor() = default;

} // namespace kiv::ifc::def::schema
