#include "Format/Ifc/Def/Schema/ExpressExpression.h"

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

UnaryExpression::UnaryExpression(UnaryOperator op, ExpressionPtr operand) :
    operator_(op), operand_(std::move(operand)) {}
UnaryExpression::~UnaryExpression() = default;
void UnaryExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}

BinaryExpression::BinaryExpression(ExpressionPtr left, BinaryOperator op, ExpressionPtr right) :
    left_(std::move(left)), operator_(op), right_(std::move(right)) {}
BinaryExpression::~BinaryExpression() {
    vChainDestroy(std::move(left_));
}
void BinaryExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}
ExpressionPtr BinaryExpression::pChainTake() {
    return std::move(left_);
}

ConstantExpression::ConstantExpression(Constant constant) : constant_(constant) {}
ConstantExpression::~ConstantExpression() = default;
void ConstantExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}

FunctionCallExpression::FunctionCallExpression(std::string name, std::vector<ExpressionPtr> arguments) :
    name_(std::move(name)), arguments_(std::move(arguments)) {}
FunctionCallExpression::~FunctionCallExpression() = default;
void FunctionCallExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}

IntervalExpression::IntervalExpression(ExpressionPtr low, IntervalOperator lowOperator, ExpressionPtr item,
                                       IntervalOperator highOperator, ExpressionPtr high) :
    low_(std::move(low)),
    item_(std::move(item)),
    high_(std::move(high)),
    lowOperator_(lowOperator),
    highOperator_(highOperator) {}
IntervalExpression::~IntervalExpression() = default;
void IntervalExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}

AggregateInitializerExpression::AggregateInitializerExpression(std::vector<ExpressionPtr> elements) :
    elements_(std::move(elements)) {}
AggregateInitializerExpression::~AggregateInitializerExpression() = default;
void AggregateInitializerExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}

RepetitionExpression::RepetitionExpression(ExpressionPtr element, ExpressionPtr count) :
    element_(std::move(element)), count_(std::move(count)) {}
RepetitionExpression::~RepetitionExpression() = default;
void RepetitionExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}

IntegerValueExpression::IntegerValueExpression(int value) : value_(value) {}
IntegerValueExpression::~IntegerValueExpression() = default;
void IntegerValueExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}

DoubleValueExpression::DoubleValueExpression(double value) : value_(value) {}
DoubleValueExpression::~DoubleValueExpression() = default;
void DoubleValueExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}

StringValueExpression::StringValueExpression(std::string value) : value_(std::move(value)) {}
StringValueExpression::~StringValueExpression() = default;
void StringValueExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}

LogicalValueExpression::LogicalValueExpression(Logical value) : value_(value) {}
LogicalValueExpression::~LogicalValueExpression() = default;
void LogicalValueExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}

EnumerationValueExpression::EnumerationValueExpression(std::string typeName, std::string valueName) :
    typeName_(std::move(typeName)), valueName_(std::move(valueName)) {}
EnumerationValueExpression::~EnumerationValueExpression() = default;
void EnumerationValueExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}

QueryExpression::QueryExpression(std::string variable, ExpressionPtr source, ExpressionPtr condition) :
    variable_(std::move(variable)), source_(std::move(source)), condition_(std::move(condition)) {}
QueryExpression::~QueryExpression() = default;
void QueryExpression::accept(ExpressionVisitor& visitor) const {
    visitor.visit(*this);
}

GetExpression::GetExpression(std::string name) : qualifier_(Qualifier::None), name_(std::move(name)) {}
GetExpression::GetExpression(Qualifier qualifier, std::string name, ExpressionPtr base) :
    qualifier_(qualifier), name_(std::move(name)), base_(std::move(base)) {}
GetExpression::GetExpression(ExpressionPtr index, ExpressionPtr indexEnd, ExpressionPtr base) :
    qualifier_(Qualifier::Index),
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
