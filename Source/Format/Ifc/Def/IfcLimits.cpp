// The list of limits repeats numbers, so that it needs no other header. Each is compared here with the code
// that keeps it; those of XML documents, which a host's own document model need not keep, in their tests.

#include "kiv/Format/Ifc/Def/IfcLimits.h"

#include "Format/Ifc/Def/Schema/IfcSchemaLimits.h"
#include "kiv/Format/Ifc/Def/Schema/ExpressTokenizer.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataType.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"

#include <limits>
#include <utility>
#include <variant>

namespace kiv::ifc::def::limits {

namespace {

template <class Number>
constexpr std::uint64_t Largest = std::numeric_limits<Number>::max();

using EntityNumber = decltype(std::declval<const schema::Entity&>().getFirstNumber());
using IntegerLiteral = std::variant_alternative_t<2, decltype(schema::ExpressToken::value)>;
using Width = decltype(std::declval<const schema::DataTypeString&>().getWidth());

} // namespace

static_assert(ExpressionNestingMax == schema::ExpressionNestingMax);
static_assert(AggregateNestingMax == schema::AggregateNestingMax);
static_assert(EntityNumberMax == Largest<EntityNumber>);
static_assert(BoundMax == Largest<decltype(schema::Bound::value)>);
static_assert(WidthMax == Largest<Width>);
static_assert(IntegerLiteralMax == Largest<IntegerLiteral>);

} // namespace kiv::ifc::def::limits
