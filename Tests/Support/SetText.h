/// Sets as text, one item a line, to compare what was written and read back with what it was made from.
///
///     EXPECT_EQ(sSetText(readBack, After::Reading), sSetText(original, After::ReadingBack));
#pragma once

#include "kiv/Format/Ifc/Def/IfcDefBase.h"

#include <string>

namespace kiv::test {

enum class After {
    /// As the set is.
    Reading,
    /// As it has to be when it was written and read back.
    ReadingBack
};

/// Everything that writing keeps. It does not keep the GUID, template type and version of a set, units,
/// constants, expressions, values and what is inside complex properties; name aliases are written under a tag
/// that reading does not know, the data type of a reference where reading does not look, a bound that is not
/// given as the data type, and the item type of a list as one more value. An alias without text is written
/// without one and not read again, and blanks at the end of a class go.
std::string sSetText(const ifc::def::xml::SetDef& set, After after);

} // namespace kiv::test
