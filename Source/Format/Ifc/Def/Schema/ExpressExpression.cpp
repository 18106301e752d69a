#include "kiv/Format/Ifc/Def/Schema/ExpressExpression.h"

#include "Base/Arena.h"
#include "Base/Size32.h"

#include <cstdint>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
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

const char* Expression::pTextKept(std::string_view text, const Arena* arena) {
    if (arena)
        return text.data();
    auto own = std::make_unique_for_overwrite<char[]>(text.size());
    text.copy(own.get(), text.size());
    return own.release();
}

ExpressionText::ExpressionText(std::string_view text, const Arena* arena) :
    text_(text.data()), size_(size32(text.size())), isOwn_(arena == nullptr) {
    if (arena)
        return;
    auto own = std::make_unique_for_overwrite<char[]>(text.size());
    text.copy(own.get(), text.size());
    text_ = own.release();
}

ExpressionList::ExpressionList(std::span<ExpressionPtr> nodes, Arena* arena) :
    size_(size32(nodes.size())), isOwn_(arena == nullptr) {
    if (arena) {
        // Never destroyed, as the nodes lie in the arena too.
        nodes_ = static_cast<ExpressionPtr*>(arena->pAllocateFor<ExpressionPtr>(nodes.size()));
        std::uninitialized_move(nodes.begin(), nodes.end(), nodes_);
        return;
    }
    nodes_ = std::make_unique<ExpressionPtr[]>(nodes.size()).release();
    std::move(nodes.begin(), nodes.end(), nodes_);
}

const ExpressionPtr& ExpressionList::at(std::size_t index) const {
    if (index >= size_)
        throw std::out_of_range("no such expression");
    return nodes_[index];
}

UnaryExpression::UnaryExpression(UnaryOperator op, ExpressionPtr operand, Arena* arena) :
    ExpressionOf(arena), operator_(op), operand_(std::move(operand)) {}

BinaryExpression::BinaryExpression(ExpressionPtr left, BinaryOperator op, ExpressionPtr right, Arena* arena) :
    ExpressionOf(arena), operator_(op), left_(std::move(left)), right_(std::move(right)) {}
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
    ExpressionOf(arena),
    nameSize_(size32(name.size())),
    arguments_(arguments, arena),
    name_(pTextKept(name, arena)) {}
FunctionCallExpression::~FunctionCallExpression() {
    vTextDestroy(name_);
}

IntervalExpression::IntervalExpression(ExpressionPtr low, IntervalOperator lowOperator, ExpressionPtr item,
                                       IntervalOperator highOperator, ExpressionPtr high, Arena* arena) :
    ExpressionOf(arena),
    lowOperator_(lowOperator),
    highOperator_(highOperator),
    low_(std::move(low)),
    item_(std::move(item)),
    high_(std::move(high)) {}

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
    ExpressionOf(arena), valueSize_(size32(value.size())), value_(pTextKept(value, arena)) {}
StringValueExpression::~StringValueExpression() {
    vTextDestroy(value_);
}

LogicalValueExpression::LogicalValueExpression(Logical value, Arena* arena) :
    ExpressionOf(arena), value_(value) {}

EnumerationValueExpression::EnumerationValueExpression(std::string_view typeName, std::string_view valueName,
                                                       Arena* arena) :
    ExpressionOf(arena),
    typeNameSize_(size32(typeName.size())),
    typeName_(typeName.data()),
    valueNameSize_(size32(valueName.size())) {
    // In a rule the value name follows the type name, so that its offset says where it is. A comment of 4 GiB
    // may lie between them, and a host may hand over texts from anywhere: then both names are copied.
    const auto distance = reinterpret_cast<std::uintptr_t>(valueName.data()) -
                          reinterpret_cast<std::uintptr_t>(typeName.data());
    if (arena && distance <= std::numeric_limits<std::uint32_t>::max()) {
        valueNamePos_ = static_cast<std::uint32_t>(distance);
        return;
    }
    const auto both = std::string(typeName).append(valueName);
    typeName_ = arena ? arena->getCopy(both).data() : pTextKept(both, arena);
    valueNamePos_ = typeNameSize_;
}
EnumerationValueExpression::~EnumerationValueExpression() {
    vTextDestroy(typeName_);
}

QueryExpression::QueryExpression(std::string_view variable, ExpressionPtr source, ExpressionPtr condition,
                                 Arena* arena) :
    ExpressionOf(arena),
    variableSize_(size32(variable.size())),
    source_(std::move(source)),
    condition_(std::move(condition)),
    variable_(pTextKept(variable, arena)) {}
QueryExpression::~QueryExpression() {
    vTextDestroy(variable_);
}

GetExpression::GetExpression(std::string_view name, Arena* arena) :
    GetExpression(Qualifier::None, name, nullptr, arena) {}
GetExpression::GetExpression(Qualifier qualifier, std::string_view name, ExpressionPtr base, Arena* arena) :
    ExpressionOf(arena),
    qualifier_(static_cast<std::uint8_t>(qualifier)),
    isIndex_(false),
    nameSize_(size32(name.size())),
    base_(std::move(base)),
    name_(pTextKept(name, arena)) {}
GetExpression::GetExpression(ExpressionPtr index, ExpressionPtr indexEnd, ExpressionPtr base, Arena* arena) :
    ExpressionOf(arena),
    qualifier_(static_cast<std::uint8_t>(Qualifier::Index)),
    isIndex_(true),
    nameSize_(0),
    base_(std::move(base)),
    index_(pIndexMake(std::move(index), std::move(indexEnd), arena)) {}
GetExpression::~GetExpression() {
    vChainDestroy(std::move(base_));
    if (!isIndex_)
        vTextDestroy(name_);
    else if (!isInArena())
        delete index_;
}
GetExpression::Index* GetExpression::pIndexMake(ExpressionPtr first, ExpressionPtr last, Arena* arena) {
    Index index{std::move(first), std::move(last)};
    if (!arena)
        return std::make_unique<Index>(std::move(index)).release();
    return std::construct_at(static_cast<Index*>(arena->pAllocateFor<Index>(1)), std::move(index));
}
ExpressionPtr GetExpression::pChainTake() {
    return std::move(base_);
}

ExpressionVisitor::~ExpressionVisitor() = default;

} // namespace kiv::ifc::def::schema
