#include "Kit/Findings/Rules/ClassRules.h"

#include "Kit/Findings/Rules/ExampleDocuments.h"

namespace kiv::kit {

std::span<const Rule> getClassRules() {
    static const Rule rules[] = {
        {"C001", "unknown-class", Severity::Error, "An applicable class is not in the schema.",
         "The set is looked up by the classes that it applies to. Under a class that does not exist nobody "
         "finds it.\n\nWrite the name of the entity as the schema has it, one in each \"ClassName\".",
         changed(WallClassSet, {{"<ClassName>IfcWall</ClassName>", "<ClassName>IfcWal</ClassName>"}}),
         WallClassSet},
        {"C002", "class-not-an-entity", Severity::Error,
         "An applicable class is something else than an entity.",
         "Sets apply to entities. The schema has the name, but as that of a defined type, a function or a "
         "rule.\n\nName the entity that was meant.",
         changed(WallClassSet,
                 {{"<ClassName>IfcWall</ClassName>", "<ClassName>IfcWallTypeEnum</ClassName>"}}),
         WallClassSet},
        {"C003", "class-letter-case", Severity::Error,
         "A class is written in another letter case than in the schema.",
         "The check finds the entity, but look-ups by class compare letter case: the set is not listed for "
         "the entity. In the applicable type value, by which nothing is looked up here, it is a "
         "warning.\n\nWrite the name as the schema has it.",
         changed(WallClassSet, {{"<ClassName>IfcWall</ClassName>", "<ClassName>IFCWALL</ClassName>"}}),
         WallClassSet},
        {"C004", "repeated-class", Severity::Warning, "A class is listed twice.",
         "The second one adds nothing, and is often there in place of another.\n\nRemove it, or write what "
         "was meant.",
         changed(WallClassSet, {{"<ClassName>IfcWall</ClassName>", "<ClassName>IfcWall</ClassName>\n"
                                                                   "    <ClassName>IfcWall</ClassName>"}}),
         WallClassSet},
        {"C005", "class-with-supertype", Severity::Note,
         "A class is listed together with one of its supertypes.",
         "What applies to an entity applies to its subtypes too. The set is listed twice for the subtype.\n\n"
         "Remove the subtype, unless the document is to name all of them on purpose.",
         changed(WallClassSet, {{"<ClassName>IfcWall</ClassName>", "<ClassName>IfcElement</ClassName>\n"
                                                                   "    <ClassName>IfcWall</ClassName>"}}),
         changed(WallClassSet, {{"<ClassName>IfcWall</ClassName>", "<ClassName>IfcElement</ClassName>"}})},
        {"C006", "empty-class", Severity::Warning, "A class name is empty.",
         "An empty \"ClassName\" is ignored. Where it is the only one, the set has no class left, and is "
         "listed only where sets without restriction are asked for.\n\nWrite the class, or remove the "
         "element.",
         changed(WallClassSet, {{"</ApplicableClasses>", "  <ClassName/>\n"
                                                         "  </ApplicableClasses>"}}),
         WallClassSet},
        {"C007", "no-classes", Severity::Note, "A set names no class that it applies to.",
         "A set without classes is one without restriction: it is listed only where such sets are asked "
         "for.\n\nName the classes in \"ApplicableClasses\", unless the set is for everything.",
         changed(WallSet,
                 {{"  <ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>\n", ""}}),
         WallClassSet},
        {"C008", "wrong-predefined-type", Severity::Error, "A class has no predefined type of that name.",
         "After \"/\" comes one of the items that the schema has for the attribute PredefinedType of the "
         "entity, in upper case. In the applicable type value, by which nothing is looked up here, another "
         "one is a warning.\n\nWrite one of the items, or the class alone.",
         changed(WallClassSet,
                 {{"<ClassName>IfcWall</ClassName>", "<ClassName>IfcWall/SOLIDWAL</ClassName>"}}),
         changed(WallClassSet,
                 {{"<ClassName>IfcWall</ClassName>", "<ClassName>IfcWall/SOLIDWALL</ClassName>"}})},
        {"C009", "no-predefined-types", Severity::Error, "A class that has no predefined types is given one.",
         "Only an entity with an attribute PredefinedType, of its own or of a supertype, has predefined "
         "types. In the applicable type value one that is given all the same is a warning.\n\nWrite the "
         "class alone, or the class that has the predefined type.",
         changed(WallClassSet,
                 {{"<ClassName>IfcWall</ClassName>", "<ClassName>IfcElement/SOLIDWALL</ClassName>"}}),
         changed(WallClassSet,
                 {{"<ClassName>IfcWall</ClassName>", "<ClassName>IfcWall/SOLIDWALL</ClassName>"}})},
        {"C010", "white-space-in-class", Severity::Error, "There is white space in a class name.",
         "Readers cut off the blanks around a class name, but not tabs and line breaks, nor blanks beside "
         "\"/\". These become a part of the name, and no entity has that.\n\nWrite the name without white "
         "space, on one line.",
         changed(WallClassSet, {{"<ClassName>IfcWall</ClassName>", "<ClassName>\n"
                                                                   "      IfcWall\n"
                                                                   "    </ClassName>"}}),
         WallClassSet},
        {"C011", "domain-before-class", Severity::Error,
         "A class is written after the name of its part of the schema.",
         "Older documents wrote DOMAIN/Class. Today the part before \"/\" is the class and the part after it "
         "a predefined type, so that the domain is taken for the class.\n\nRemove the domain and the \"/\".",
         changed(WallClassSet, {{"<ClassName>IfcWall</ClassName>",
                                 "<ClassName>IFCSHAREDBLDGELEMENTS/IfcWall</ClassName>"}}),
         WallClassSet},
        {"C012", "attribute-in-class", Severity::Error,
         "A predefined type is written as the value of an attribute.",
         "Older documents wrote Class.PredefinedType=\"X\" for what is Class/X today. Readers take the whole "
         "for the name of a class.\n\nWrite Class/X.",
         changed(WallClassSet, {{"<ClassName>IfcWall</ClassName>",
                                 R"(<ClassName>IfcWall.PredefinedType="SOLIDWALL"</ClassName>)"}}),
         changed(WallClassSet,
                 {{"<ClassName>IfcWall</ClassName>", "<ClassName>IfcWall/SOLIDWALL</ClassName>"}})},
        {"C013", "contradicting-type-value", Severity::Warning,
         "The applicable type value contradicts the applicable classes.",
         "The type value repeats or narrows what the classes say: it names one of them, a subtype or "
         "supertype of one, or its type, and the same predefined type. Where it names something else, one of "
         "the two is wrong, and readers differ in which of them they look at.\n\nMake both say the same.",
         changed(WallClassSet, {{"<PropertyDefs>", "<ApplicableTypeValue>IfcSlab</ApplicableTypeValue>\n"
                                                   "  <PropertyDefs>"}}),
         changed(WallClassSet,
                 {{"<PropertyDefs>", "<ApplicableTypeValue>IfcWall/SOLIDWALL</ApplicableTypeValue>\n"
                                     "  <PropertyDefs>"}})},
        {"C014", "older-type-value", Severity::Note,
         "The applicable type value is in another spelling than today's.",
         "Documents of IFC 2x3 wrote Class.PredefinedType=\"X\" for what is Class/X since. Readers that "
         "look at the type value may know one of them only. In documents that declare IFC 2x3 it is not "
         "reported. Other marks between a class and its predefined type, such as \"\\\" or \":\", and \";\" "
         "between classes are in no document of IFC.\n\nWrite Class/X, and several of them with a comma "
         "between.",
         changed(WallClassSet,
                 {{"<PropertyDefs>",
                   R"xml(<ApplicableTypeValue>IfcWall.PredefinedType="SOLIDWALL"</ApplicableTypeValue>
  <PropertyDefs>)xml"}}),
         changed(WallClassSet,
                 {{"<PropertyDefs>", "<ApplicableTypeValue>IfcWall/SOLIDWALL</ApplicableTypeValue>\n"
                                     "  <PropertyDefs>"}})},
    };
    return rules;
}

} // namespace kiv::kit
