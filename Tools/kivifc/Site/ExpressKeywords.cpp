#include "kivifc/Site/ExpressKeywords.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace kiv::kivifc::site {

namespace {

/// In order, for a binary search.
constexpr std::string_view Words =
    "ABS ABSTRACT ACOS AGGREGATE ALIAS AND ANDOR ARRAY AS ASIN ATAN BAG BEGIN BINARY BLENGTH BOOLEAN "
    "BY CASE CONSTANT CONST_E COS DERIVE DIV ELSE END END_ALIAS END_CASE END_CONSTANT END_ENTITY "
    "END_FUNCTION END_IF END_LOCAL END_PROCEDURE END_REPEAT END_RULE END_SCHEMA END_TYPE ENTITY "
    "ENUMERATION ESCAPE EXISTS EXP EXTENSIBLE FALSE FIXED FOR FORMAT FROM FUNCTION GENERIC HIBOUND "
    "HIINDEX IF IN INSERT INTEGER INVERSE LENGTH LIKE LIST LOBOUND LOCAL LOG LOG10 LOG2 LOGICAL "
    "LOINDEX MOD NOT NUMBER NVL ODD OF ONEOF OPTIONAL OR OTHERWISE PI PROCEDURE QUERY REAL REFERENCE "
    "REMOVE REPEAT RETURN ROLESOF RULE SCHEMA SELECT SELF SET SIN SIZEOF SKIP SQRT STRING SUBTYPE "
    "SUPERTYPE TAN THEN TO TRUE TYPE TYPEOF UNIQUE UNKNOWN UNTIL USEDIN VALUE VALUE_IN VAR WHERE "
    "WHILE XOR";

constexpr auto Count = static_cast<std::size_t>(std::ranges::count(Words, ' ')) + 1;

consteval std::array<std::string_view, Count> keywords() {
    std::array<std::string_view, Count> words;
    auto rest = Words;
    for (auto& word : words) {
        word = rest.substr(0, rest.find(' '));
        rest.remove_prefix(std::min(word.size() + 1, rest.size()));
    }
    return words;
}

constexpr auto Keywords = keywords();
static_assert(std::ranges::is_sorted(Keywords));

} // namespace

bool isExpressKeyword(std::string_view upper) {
    return std::ranges::binary_search(Keywords, upper);
}

} // namespace kiv::kivifc::site
