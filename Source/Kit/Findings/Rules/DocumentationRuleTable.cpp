#include "Kit/Findings/Rules/DocumentationRules.h"

#include "Kit/Findings/Rules/ExampleDocuments.h"

namespace kiv::kit {

std::span<const Rule> getDocumentationRules() {
    static const Rule rules[] = {
        {"D001", "set-without-definition", Severity::Note, "A set has no definition.",
         "The definition is what people read who have to choose a set, and what translations start from.\n\n"
         "Say in \"Definition\" what the set is for.",
         changed(WallClassSet, {{"  <Definition>Properties of all walls.</Definition>\n", ""}}),
         WallClassSet},
        {"D002", "member-without-definition", Severity::Note, "A property or quantity has no definition.",
         "A name alone leaves open what is meant, and people fill in different things.\n\nSay in "
         "\"Definition\" what the value is, and from where to where it is measured.",
         changed(ThicknessSet, {{"      <Definition>How thick it is.</Definition>\n", ""}}), ThicknessSet},
        {"D003", "name-with-several-types", Severity::Note, "One name has different types in different sets.",
         "People who know the one expect the other to be the same, and so do programs that look for a "
         "property by its name alone. Where most sets agree on a type, the others are reported.\n\nUse the "
         "same type, or another name.",
         inFiles({{"Pset_WallCommon.xml", ThicknessSet},
                  {"Pset_WallFinish.xml",
                   changed(ThicknessSet, {{"<Name>Pset_WallCommon</Name>", "<Name>Pset_WallFinish</Name>"},
                                          {R"(<DataType type="IfcPositiveLengthMeasure"/>)",
                                           R"(<DataType type="IfcLabel"/>)"}})}}),
         inFiles({{"Pset_WallCommon.xml", ThicknessSet},
                  {"Pset_WallFinish.xml", changed(ThicknessSet, {{"<Name>Pset_WallCommon</Name>",
                                                                  "<Name>Pset_WallFinish</Name>"}})}})},
    };
    return rules;
}

} // namespace kiv::kit
