#include "Kit/Findings/Rules/AcrossRules.h"

#include "Kit/Findings/Rules/ExampleDocuments.h"

namespace kiv::kit {

std::span<const Rule> getAcrossGuidRules() {
    static const Rule rules[] = {
        {"G101", "guid-in-two-documents", Severity::Error, "A GUID is in two documents.",
         "A GUID is there to identify one definition. A look-up by GUID finds the first one of the two and "
         "never the other. That of a set is not looked up, and is a warning.\n\nGive the later one a GUID of "
         "its own. Copies of one set are reported as two sets of one name instead.",
         inFiles(
             {{"Pset_WallCommon.xml",
               changed(ThicknessSet, {{"<PropertyDef>",
                                       R"(<PropertyDef ifdguid="11111111-2222-3333-4444-555555555555">)"}})},
              {"Pset_WallFinish.xml",
               changed(
                   ThicknessSet,
                   {{"<Name>Pset_WallCommon</Name>", "<Name>Pset_WallFinish</Name>"},
                    {"<PropertyDef>", R"(<PropertyDef ifdguid="11111111-2222-3333-4444-555555555555">)"},
                    {"<Name>Thickness</Name>", "<Name>Colour</Name>"},
                    {"<Definition>How thick it is.</Definition>",
                     "<Definition>What it looks like.</Definition>"},
                    {R"(<DataType type="IfcPositiveLengthMeasure"/>)", R"(<DataType type="IfcLabel"/>)"}})}}),
         inFiles(
             {{"Pset_WallCommon.xml",
               changed(ThicknessSet, {{"<PropertyDef>",
                                       R"(<PropertyDef ifdguid="11111111-2222-3333-4444-555555555555">)"}})},
              {"Pset_WallFinish.xml",
               changed(ThicknessSet,
                       {{"<Name>Pset_WallCommon</Name>", "<Name>Pset_WallFinish</Name>"},
                        {"<PropertyDef>", R"(<PropertyDef ifdguid="11111111-2222-3333-4444-666666666666">)"},
                        {"<Name>Thickness</Name>", "<Name>Colour</Name>"},
                        {"<Definition>How thick it is.</Definition>",
                         "<Definition>What it looks like.</Definition>"},
                        {R"(<DataType type="IfcPositiveLengthMeasure"/>)",
                         R"(<DataType type="IfcLabel"/>)"}})}})},
    };
    return rules;
}

std::span<const Rule> getAcrossRules() {
    static const Rule rules[] = {
        {"X001", "set-name-twice", Severity::Error, "Two sets have one name.",
         "Sets are looked up by name, in any letter case. Of two sets of one name only the first is kept, "
         "and the other is lost.\n\nRename one of them, or make them one set.",
         inFiles({{"Pset_WallCommon.xml", WallClassSet},
                  {"Pset_WallCommon2.xml", changed(WallClassSet, {{"<Name>Pset_WallCommon</Name>",
                                                                   "<Name>PSET_WallCommon</Name>"}})}}),
         inFiles({{"Pset_WallCommon.xml", WallClassSet},
                  {"Pset_WallFinish.xml", changed(WallClassSet, {{"<Name>Pset_WallCommon</Name>",
                                                                  "<Name>Pset_WallFinish</Name>"}})}})},
        {"X002", "set-name-in-two-contexts", Severity::Note, "Sets of one name are in different contexts.",
         "A set of a context that is searched first hides the sets of that name in others. That is how an "
         "office replaces a standard set by its own.\n\nNothing is to be done when the hiding is intended.",
         inFiles(
             {{"standard/Pset_WallCommon.xml", WallClassSet}, {"office/Pset_WallCommon.xml", WallClassSet}}),
         inFiles(
             {{"standard/Pset_WallCommon.xml", WallClassSet},
              {"office/Pset_WallFinish.xml",
               changed(WallClassSet, {{"<Name>Pset_WallCommon</Name>", "<Name>Pset_WallFinish</Name>"}})}})},
        {"X003", "enumeration-with-other-items", Severity::Warning,
         "One enumeration has different items in different places.",
         "An enumeration of one name is one enumeration: in a model there is one list of items for it. Where "
         "the lists differ, values that are legal in one place are not in the other.\n\nMake the lists the "
         "same, or give one of the enumerations another name. The order of the items does not matter.",
         inFiles({{"Pset_WallCommon.xml", StatusSet},
                  {"Pset_WallFinish.xml",
                   changed(StatusSet, {{"<Name>Pset_WallCommon</Name>", "<Name>Pset_WallFinish</Name>"},
                                       {"<EnumItem>EXISTING</EnumItem>", "<EnumItem>OLD</EnumItem>"}})}}),
         inFiles({{"Pset_WallCommon.xml", StatusSet},
                  {"Pset_WallFinish.xml",
                   changed(StatusSet,
                           {{"<Name>Pset_WallCommon</Name>", "<Name>Pset_WallFinish</Name>"},
                            {"<EnumItem>NEW</EnumItem>\n            <EnumItem>EXISTING</EnumItem>",
                             "<EnumItem>EXISTING</EnumItem>\n            <EnumItem>NEW</EnumItem>"}})}})},
        {"X004", "names-differ-in-case", Severity::Note, "Two names differ in letter case only.",
         "To some programs they are one name, to others two.\n\nWrite the name in one way everywhere.",
         inFiles({{"Pset_WallCommon.xml", ThicknessSet},
                  {"Pset_WallFinish.xml",
                   changed(ThicknessSet, {{"<Name>Pset_WallCommon</Name>", "<Name>Pset_WallFinish</Name>"},
                                          {"<Name>Thickness</Name>", "<Name>THICKNESS</Name>"}})}}),
         inFiles({{"Pset_WallCommon.xml", ThicknessSet},
                  {"Pset_WallFinish.xml", changed(ThicknessSet, {{"<Name>Pset_WallCommon</Name>",
                                                                  "<Name>Pset_WallFinish</Name>"}})}})},
    };
    return rules;
}

} // namespace kiv::kit
