#include "Kit/Findings/Rules/Rules.h"
#include "kiv/Kit/Findings/IgnoreComments.h"

#include <array>

// Rules about the comments by which a document speaks to this program.
namespace kiv::kit {

namespace {

constexpr std::array Rules{Rule{
    IgnoreComments::unusedCode, "unused-ignore", Severity::Note,
    "A comment ignores a code that is not found there.",
    "A comment such as <!-- kivifc: ignore T001 --> hides the findings of a code, or of all codes that begin "
    "so, in the next element and in everything inside it. When nothing is left to hide it only misleads, and "
    "it would hide the next mistake. Remove it, or put it before the element that it is about.",
    RuleExample{R"(<?xml version="1.0" encoding="utf-8"?>
<PropertySetDef ifdguid="00000000000000000000000000000000">
  <IfcVersion version="BUILDING1"/>
  <Name>Pset_Example</Name>
  <Definition>A set without mistakes.</Definition>
  <!-- kivifc: ignore T001 -->
  <ApplicableClasses>
    <ClassName>BldWall</ClassName>
  </ApplicableClasses>
  <PropertyDefs/>
</PropertySetDef>
)"},
    RuleExample{R"(<?xml version="1.0" encoding="utf-8"?>
<PropertySetDef ifdguid="00000000000000000000000000000000">
  <IfcVersion version="BUILDING1"/>
  <Name>Pset_Example</Name>
  <Definition>A set without mistakes.</Definition>
  <ApplicableClasses>
    <ClassName>BldWall</ClassName>
  </ApplicableClasses>
  <PropertyDefs/>
</PropertySetDef>
)"}}};

} // namespace

std::span<const Rule> getCommentRules() {
    return Rules;
}

} // namespace kiv::kit
