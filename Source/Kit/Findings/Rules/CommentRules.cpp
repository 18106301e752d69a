#include "Kit/Findings/Rules/ExampleDocuments.h"
#include "Kit/Findings/Rules/Rules.h"
#include "kiv/Kit/Findings/IgnoreComments.h"

// Rules about the comments by which a document speaks to this program.
namespace kiv::kit {

std::span<const Rule> getCommentRules() {
    // All of these rules are right with it.
    static const RuleExample withoutComments = changed(
        WallSet, {{"<PropertySetDef>", R"(<PropertySetDef ifdguid="aa3b8880d21511e1800000215ad4efdf">)"}});
    static const Rule rules[] = {
        {IgnoreComments::unusedCode, "unused-ignore", Severity::Note,
         "A comment ignores a code that is not found there.",
         "A comment such as <!-- kivifc: ignore T001 --> hides the findings of a code, or of all codes that "
         "begin so, in the next element and in everything inside it. When nothing is left to hide it only "
         "misleads, and it would hide the next mistake. Remove it, or put it before the element that it is "
         "about.",
         changed(withoutComments,
                 {{"<ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>",
                   "<!-- kivifc: ignore T001 -->\n"
                   "  <ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>"}}),
         withoutComments},
        {IgnoreComments::emptyCode, "ignore-without-code", Severity::Note,
         "A comment ignores findings and does not say which.",
         "A comment <!-- kivifc: ignore --> hides nothing: it has to name the codes, as in <!-- kivifc: "
         "ignore T001 -->, so that it does not hide the next mistake too. Name them, or remove the comment.",
         changed(withoutComments,
                 {{"<ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>",
                   "<!-- kivifc: ignore -->\n"
                   "  <ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>"}}),
         withoutComments},
        {IgnoreComments::misspeltCode, "misspelt-ignore", Severity::Note,
         "A comment looks like one that ignores findings, and is none.",
         "Comments that ignore findings begin with \"kivifc: ignore\", in lower case and with the colon, "
         "and then name codes: <!-- kivifc: ignore T001 -->. One that is written in another way is a "
         "comment like any other and hides nothing. It is about the next element and what is inside it, so "
         "that there is no other form for the next line.\n\nWrite it as above, or remove the comment.",
         changed(withoutComments,
                 {{"<ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>",
                   "<!-- kivifc: ignor T001 -->\n"
                   "  <ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>"}}),
         withoutComments},
    };
    return rules;
}

} // namespace kiv::kit
