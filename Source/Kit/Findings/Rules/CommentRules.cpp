#include "Kit/Findings/Rules/Rules.h"
#include "kiv/Kit/Findings/IgnoreComments.h"

#include <array>

// Rules about the comments by which a document speaks to this program.
namespace kiv::kit {

namespace {

/// Both rules are right with it.
constexpr RuleExample WithoutComments{R"xml(<PropertySetDef ifdguid="aa3b8880d21511e1800000215ad4efdf">
  <IfcVersion version="IFC4"/>
  <Name>Pset_WallCommon</Name>
  <Definition>Properties of all walls.</Definition>
  <ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>
  <PropertyDefs>
    <PropertyDef>
      <Name>IsExternal</Name>
      <Definition>Whether it is outside.</Definition>
      <PropertyType><TypePropertySingleValue><DataType type="IfcBoolean"/></TypePropertySingleValue></PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"};

constexpr std::array Rules{
    Rule{IgnoreComments::unusedCode, "unused-ignore", Severity::Note,
         "A comment ignores a code that is not found there.",
         "A comment such as <!-- kivifc: ignore T001 --> hides the findings of a code, or of all codes that "
         "begin so, in the next element and in everything inside it. When nothing is left to hide it only "
         "misleads, and it would hide the next mistake. Remove it, or put it before the element that it is "
         "about.",
         RuleExample{R"xml(<PropertySetDef ifdguid="aa3b8880d21511e1800000215ad4efdf">
  <IfcVersion version="IFC4"/>
  <Name>Pset_WallCommon</Name>
  <Definition>Properties of all walls.</Definition>
  <!-- kivifc: ignore T001 -->
  <ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>
  <PropertyDefs>
    <PropertyDef>
      <Name>IsExternal</Name>
      <Definition>Whether it is outside.</Definition>
      <PropertyType><TypePropertySingleValue><DataType type="IfcBoolean"/></TypePropertySingleValue></PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"},
         WithoutComments},
    Rule{IgnoreComments::emptyCode, "ignore-without-code", Severity::Note,
         "A comment ignores findings and does not say which.",
         "A comment <!-- kivifc: ignore --> hides nothing: it has to name the codes, as in <!-- kivifc: "
         "ignore "
         "T001 -->, so that it does not hide the next mistake too. Name them, or remove the comment.",
         RuleExample{R"xml(<PropertySetDef ifdguid="aa3b8880d21511e1800000215ad4efdf">
  <IfcVersion version="IFC4"/>
  <Name>Pset_WallCommon</Name>
  <Definition>Properties of all walls.</Definition>
  <!-- kivifc: ignore -->
  <ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>
  <PropertyDefs>
    <PropertyDef>
      <Name>IsExternal</Name>
      <Definition>Whether it is outside.</Definition>
      <PropertyType><TypePropertySingleValue><DataType type="IfcBoolean"/></TypePropertySingleValue></PropertyType>
    </PropertyDef>
  </PropertyDefs>
</PropertySetDef>
)xml"},
         WithoutComments}};

} // namespace

std::span<const Rule> getCommentRules() {
    return Rules;
}

} // namespace kiv::kit
