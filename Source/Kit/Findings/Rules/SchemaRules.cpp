#include "Kit/Findings/Rules/SchemaRules.h"

namespace kiv::kit {

namespace {

constexpr RuleExample WallOfElement = {"SCHEMA WALLS;\n"
                                       "ENTITY Element;\n"
                                       "END_ENTITY;\n"
                                       "ENTITY Wall\n"
                                       " SUBTYPE OF (Element);\n"
                                       "END_ENTITY;\n"
                                       "END_SCHEMA;\n"};

constexpr Rule SchemaRules[] = {
    {"E001",
     "no-declarations",
     Severity::Error,
     "The file has no schema, or a schema without declarations.",
     "A schema begins with a line \"SCHEMA Name;\", in capitals. Texts in UTF-16, lines that end with "
     "carriage returns alone, and keywords in lower case are the usual reasons why none is found; the "
     "message says which of them is likely. Save the file as UTF-8 with line feeds, and write keywords in "
     "capitals.",
     {"schema WALLS;\n"
      "ENTITY Wall;\n"
      "END_ENTITY;\n"
      "end_schema;\n"},
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"}},

    {"E002",
     "declaration-passed-over",
     Severity::Error,
     "A declaration is not read, or not under its name.",
     "Schemas are read line by line: a declaration begins on a line of its own with TYPE, ENTITY, FUNCTION "
     "or RULE in capitals, followed by a blank, the name, and a blank or \";\". Everything written in "
     "another way is missing from the schema, although EXPRESS allows it. Put the keyword and the name at "
     "the beginning of a line. Where the name is missing, the notes have that of the schema which then is "
     "not declared, if it is a single one. Documents that use a lost name have no finding for that: a note "
     "says in how many it is used.",
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      "END_ENTITY;\n"
      "entity Door;\n"
      "end_entity;\n"
      "END_SCHEMA;\n"},
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      "END_ENTITY;\n"
      "ENTITY Door;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"}},

    {"E003",
     "declaration-on-one-line",
     Severity::Error,
     "A declaration begins and ends on the same line.",
     "The line with the keyword is not searched for the end: the declaration goes on until the next end of "
     "its kind, and takes the declarations on the way with it. The notes list them. Put the end on a line "
     "of its own.",
     {"SCHEMA WALLS;\n"
      "TYPE Label = STRING; END_TYPE;\n"
      "TYPE Text = STRING;\n"
      "END_TYPE;\n"
      "END_SCHEMA;\n"},
     {"SCHEMA WALLS;\n"
      "TYPE Label = STRING;\n"
      "END_TYPE;\n"
      "TYPE Text = STRING;\n"
      "END_TYPE;\n"
      "END_SCHEMA;\n"}},

    {"E004",
     "end-missing",
     Severity::Error,
     "The end of a declaration is missing, or is not seen.",
     "Without END_TYPE, END_ENTITY, END_FUNCTION or END_RULE, in capitals and on a line of its own, a "
     "declaration goes on until the next end of its kind, and takes the declarations on the way with it. The "
     "notes list them.",
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      "\tName : STRING;\n"
      "ENTITY Door;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"},
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      "\tName : STRING;\n"
      "END_ENTITY;\n"
      "ENTITY Door;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"}},

    {"E005",
     "text-read-as-declaration",
     Severity::Error,
     "A comment, a string or a part of a declaration is read as the beginning or the end of one.",
     "Comments are not recognised between and inside declarations: a line that contains TYPE, ENTITY, "
     "FUNCTION or RULE in capitals, wherever it is, begins a declaration, and one with END_ENTITY ends an "
     "entity. Write the word in lower case there, or leave it out. Where the first line of a declaration is "
     "missing, its line with SUBTYPE OF or with END_TYPE begins another, which goes on until the next end "
     "of its kind. The name that was on the missing line is in the notes, if a single name of the schema is "
     "missing.",
     {"SCHEMA WALLS;\n"
      "(* Every ENTITY has a name. *)\n"
      "ENTITY Wall;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"},
     {"SCHEMA WALLS;\n"
      "(* Every entity has a name. *)\n"
      "ENTITY Wall;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"}},

    {"E006",
     "part-passed-over",
     Severity::Error,
     "A part of a declaration is not read, or is misread.",
     "Attributes, inverse and derived attributes and UNIQUE rules are each read from a line of their own "
     "with \" : \" in it, blanks included; SUBTYPE OF and SUPERTYPE OF (ONEOF from lines below that of the "
     "keyword; items and members without comments between them. What is written in another way is missing "
     "from the schema, although EXPRESS allows it; so are the types that BAG, OPTIONAL elements of an ARRAY "
     "and "
     "the precision of REAL are in, and the length in \"STRING (255)\". A misspelt keyword, or one in lower "
     "case, is one "
     "finding, also in a type, as OPTIONAL and SET are; the notes say what is lost because of it.",
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      "\tName: STRING;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"},
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      "\tName : STRING;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"}},

    {"E007",
     "rule-cut-short",
     Severity::Warning,
     "A WHERE rule is not read to its end.",
     "The rules of a declaration are read in order up to the first that is not understood; those after it "
     "are missing. A comment that begins with \"--\" ends a rule as \";\" does, and a line with \";\" is "
     "the last of its rule. Nothing can be selected from the result of a call, as in Cross(A, B).Length, "
     "although EXPRESS allows that and official schemas do it.",
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      "\tHeight : REAL;\n"
      " WHERE\n"
      "\tTall : Height > 0 -- metres\n"
      "\t\tAND Height < 10;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"},
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      "\tHeight : REAL;\n"
      " WHERE\n"
      "\tTall : (Height > 0) (* metres *)\n"
      "\t\tAND (Height < 10);\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"}},

    {"E008",
     "comment-not-closed",
     Severity::Warning,
     "A comment begins and nothing closes it.",
     "A comment goes on from (* to *), and comments nest. One that nothing closes hides everything after it "
     "from other programs; here it is taken to end with its line.",
     {"SCHEMA WALLS;\n"
      "(* Walls of all kinds.\n"
      "ENTITY Wall;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"},
     {"SCHEMA WALLS;\n"
      "(* Walls of all kinds. *)\n"
      "ENTITY Wall;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"}},

    {"E009",
     "semicolon-missing",
     Severity::Warning,
     "A statement does not end with \";\".",
     "Every declaration, attribute and rule of EXPRESS ends with \";\", and so do the ends of declarations. "
     "Without it other programs refuse the schema; what comes next may be taken for a part of the statement "
     "and be lost, which makes the finding an error, and is listed in the notes.",
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      " Height : REAL\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"},
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      " Height : REAL;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"}},

    {"E010",
     "declared-twice",
     Severity::Error,
     "A name is declared twice.",
     "Names differ in more than letter case: those of a schema, the attributes of an entity, its labels, "
     "the items of an enumeration and the members of a selection. Of two declarations of one name only the "
     "first is found. A label or a member that is there twice is a warning.",
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      "END_ENTITY;\n"
      "ENTITY WALL;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"},
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      "END_ENTITY;\n"
      "ENTITY Door;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"}},

    {"E011",
     "unknown-supertype",
     Severity::Error,
     "The supertype of an entity, or the entity that a global rule is about, is not declared.",
     "SUBTYPE OF must name an entity of the schema. Without it the entity has no supertype and inherits "
     "nothing.",
     {"SCHEMA WALLS;\n"
      "ENTITY Element;\n"
      "END_ENTITY;\n"
      "ENTITY Wall\n"
      " SUBTYPE OF (Elemnt);\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"},
     WallOfElement},

    {"E012",
     "unknown-subtype",
     Severity::Error,
     "A subtype that an entity lists is not declared.",
     "SUPERTYPE OF must name entities of the schema. The one that is not found is missing from the tree of "
     "entities.",
     {"SCHEMA WALLS;\n"
      "ENTITY Element\n"
      " ABSTRACT SUPERTYPE OF (ONEOF\n"
      "\t(Wal));\n"
      "END_ENTITY;\n"
      "ENTITY Wall\n"
      " SUBTYPE OF (Element);\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"},
     {"SCHEMA WALLS;\n"
      "ENTITY Element\n"
      " ABSTRACT SUPERTYPE OF (ONEOF\n"
      "\t(Wall));\n"
      "END_ENTITY;\n"
      "ENTITY Wall\n"
      " SUBTYPE OF (Element);\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"}},

    {"E013",
     "unknown-type",
     Severity::Error,
     "The type of an attribute, or what a type is made of, is not declared.",
     "The type of an attribute must be a type or an entity of the schema or one that EXPRESS itself has; a "
     "type is made of another type, and of entities only in a list or a selection. An attribute whose type "
     "is not found has none, and its values cannot be checked. A name that is missing in several places has "
     "one finding, at the first; the notes list the others.",
     {"SCHEMA WALLS;\n"
      "TYPE Label = STRING;\n"
      "END_TYPE;\n"
      "ENTITY Wall;\n"
      "\tName : OPTIONAL Lable;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"},
     {"SCHEMA WALLS;\n"
      "TYPE Label = STRING;\n"
      "END_TYPE;\n"
      "ENTITY Wall;\n"
      "\tName : OPTIONAL Label;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"}},

    {"E014",
     "unknown-select-member",
     Severity::Error,
     "A member of a selection is not declared.",
     "SELECT must name types and entities of the schema. The one that is not found is missing from the "
     "selection.",
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      "END_ENTITY;\n"
      "TYPE Barrier = SELECT\n"
      "\t(Wall\n"
      "\t,Fence);\n"
      "END_TYPE;\n"
      "END_SCHEMA;\n"},
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      "END_ENTITY;\n"
      "TYPE Barrier = SELECT\n"
      "\t(Wall);\n"
      "END_TYPE;\n"
      "END_SCHEMA;\n"}},

    {"E015",
     "unknown-inverted-attribute",
     Severity::Error,
     "The attribute that an inverse attribute inverts is not an explicit one of the entity.",
     "After FOR comes an attribute that the entity before FOR, or a supertype of it, declares, in the same "
     "letter case. Without it the inverse attribute leads nowhere.",
     {"SCHEMA WALLS;\n"
      "ENTITY Door;\n"
      "\tHost : Wall;\n"
      "END_ENTITY;\n"
      "ENTITY Wall;\n"
      " INVERSE\n"
      "\tDoors : SET [0:?] OF Door FOR Hosts;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"},
     {"SCHEMA WALLS;\n"
      "ENTITY Door;\n"
      "\tHost : Wall;\n"
      "END_ENTITY;\n"
      "ENTITY Wall;\n"
      " INVERSE\n"
      "\tDoors : SET [0:?] OF Door FOR Host;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"}},

    {"E016",
     "unknown-redeclared-attribute",
     Severity::Error,
     "An attribute that is declared again is not an explicit one of the supertype.",
     "SELF\\Entity.Attribute declares an attribute of a supertype again. The entity and the attribute must "
     "exist, in the same letter case.",
     {"SCHEMA WALLS;\n"
      "ENTITY Element;\n"
      "\tHeight : REAL;\n"
      "END_ENTITY;\n"
      "ENTITY Wall\n"
      " SUBTYPE OF (Element);\n"
      " DERIVE\n"
      "\tSELF\\Element.Hight : REAL := 2.5;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"},
     {"SCHEMA WALLS;\n"
      "ENTITY Element;\n"
      "\tHeight : REAL;\n"
      "END_ENTITY;\n"
      "ENTITY Wall\n"
      " SUBTYPE OF (Element);\n"
      " DERIVE\n"
      "\tSELF\\Element.Height : REAL := 2.5;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"}},

    {"E017",
     "unknown-unique-attribute",
     Severity::Warning,
     "A UNIQUE rule names an attribute that the entity lacks.",
     "A UNIQUE rule lists attributes of its entity or of its supertypes.",
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      "\tMark : STRING;\n"
      " UNIQUE\n"
      "\tUR1 : Marks;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"},
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      "\tMark : STRING;\n"
      " UNIQUE\n"
      "\tUR1 : Mark;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"}},

    {"E018",
     "unknown-name-in-expression",
     Severity::Warning,
     "An expression uses an attribute, an entity, a function, an item or a variable that is not declared.",
     "This looks at WHERE rules, derived attributes, functions and global rules, and in strings at names "
     "such as 'IFC4.IFCWALL', which TYPEOF and USEDIN give. A misspelt keyword in the body of a function is "
     "such a name too, and the note has the one that is meant. After the dot of what is no name of the "
     "schema any attribute will do, as long as some entity has it. A rule with a name that means nothing, "
     "or with that of another schema, cannot be evaluated, or is never fulfilled. The schema is read all "
     "the same.",
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      "\tHeight : REAL;\n"
      " WHERE\n"
      "\tTall : Hight > 0;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"},
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      "\tHeight : REAL;\n"
      " WHERE\n"
      "\tTall : Height > 0;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"}},

    {"E019",
     "schema-not-ended",
     Severity::Warning,
     "The end of the schema is missing.",
     "END_SCHEMA, in capitals, ends a schema. Without it the rest of the file is read as a part of the "
     "schema, and nothing shows whether the file is whole. Of a file that seems to be cut off, names that "
     "are "
     "not declared are notes of this finding: their declarations may be in the part that is lost.",
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      "END_ENTITY;\n"},
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"}},

    {"E020",
     "illegal-name",
     Severity::Warning,
     "A name has a character in it that names do not have.",
     "Names are made of the letters of ASCII, digits and \"_\", and begin with a letter. The declaration is "
     "read under "
     "the name that is written, but other programs refuse the schema, and nothing can refer to it.",
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      "\tFire-Rating : STRING;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"},
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      "\tFireRating : STRING;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"}},

    {"E021",
     "circle-of-definitions",
     Severity::Error,
     "An entity is its own supertype, or a type is defined by itself, directly or through others.",
     "Such an entity has no topmost supertype, and such a type has no values. The "
     "message lists those that are between it and itself. Lists and selections may lead back to their "
     "type.",
     {"SCHEMA WALLS;\n"
      "ENTITY Element\n"
      " SUBTYPE OF (Wall);\n"
      "END_ENTITY;\n"
      "ENTITY Wall\n"
      " SUBTYPE OF (Element);\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"},
     WallOfElement},

    {"E022",
     "list-broken",
     Severity::Warning,
     "A sign, a name, a type or a keyword is missing in a declaration, or bounds are wrong.",
     "Names in a list are in brackets and separated by commas; bounds are in square brackets with \":\" "
     "between them, integers of which the smaller is the first, and OF comes before what a list is of. \"=\" "
     "comes after the "
     "name of a type, \":\" between that of an attribute and its type, FOR after the entity of an inverse "
     "one, and \":=\" before a value. Other programs refuse the schema. Bounds without \":\" are "
     "not read, and what comes next may be misread, which makes the finding an error, and is listed in the "
     "notes. A second \":\" is found here too.",
     {"SCHEMA WALLS;\n"
      "TYPE Kind = ENUMERATION OF\n"
      "\t(SOLID\n"
      "\tHOLLOW);\n"
      "END_TYPE;\n"
      "END_SCHEMA;\n"},
     {"SCHEMA WALLS;\n"
      "TYPE Kind = ENUMERATION OF\n"
      "\t(SOLID\n"
      "\t,HOLLOW);\n"
      "END_TYPE;\n"
      "END_SCHEMA;\n"}},

    {"E023",
     "text-between-declarations",
     Severity::Warning,
     "A text is in no declaration.",
     "Between declarations only comments and statements of EXPRESS belong. Anything else is passed over: "
     "often it is an attribute after END_ENTITY, or what is left of a declaration.\n\nMove it to where it "
     "belongs, or write it as a comment.",
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      "END_ENTITY;\n"
      "\tMark : STRING;\n"
      "END_SCHEMA;\n"},
     {"SCHEMA WALLS;\n"
      "ENTITY Wall;\n"
      "\tMark : STRING;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"}},

    {"E024",
     "open-statement",
     Severity::Warning,
     "A statement in a function or rule lacks THEN or its end, or an end has no statement.",
     "IF goes on with THEN and ends with END_IF, CASE with END_CASE, REPEAT with END_REPEAT, LOCAL with "
     "END_LOCAL, and BEGIN with END. Readers of this library keep bodies as text; programs that run them "
     "refuse the schema.\n\nAdd what is missing, or remove the end that is too many.",
     {"SCHEMA WALLS;\n"
      "FUNCTION Rounded (Height : REAL) : REAL;\n"
      "\tIF Height > 1.0 THEN\n"
      "\t\tRETURN (1.0);\n"
      "\tRETURN (Height);\n"
      "END_FUNCTION;\n"
      "END_SCHEMA;\n"},
     {"SCHEMA WALLS;\n"
      "FUNCTION Rounded (Height : REAL) : REAL;\n"
      "\tIF Height > 1.0 THEN\n"
      "\t\tRETURN (1.0);\n"
      "\tEND_IF;\n"
      "\tRETURN (Height);\n"
      "END_FUNCTION;\n"
      "END_SCHEMA;\n"}},

    {"R090",
     "schema-report",
     Severity::Error,
     "Something was reported while the schema was read, and no other rule explains it.",
     "The message is that of the report, which has no place in the file. It says that a name was not found, "
     "or that a rule was not understood. It comes of OPTIONAL before an inverse attribute, for example.",
     {"SCHEMA WALLS;\n"
      "ENTITY Door;\n"
      "\tHost : Wall;\n"
      "END_ENTITY;\n"
      "ENTITY Wall;\n"
      " INVERSE\n"
      "\tDoors : OPTIONAL SET [0:?] OF Door FOR Host;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"},
     {"SCHEMA WALLS;\n"
      "ENTITY Door;\n"
      "\tHost : Wall;\n"
      "END_ENTITY;\n"
      "ENTITY Wall;\n"
      " INVERSE\n"
      "\tDoors : SET [0:?] OF Door FOR Host;\n"
      "END_ENTITY;\n"
      "END_SCHEMA;\n"}},
};

} // namespace

std::span<const Rule> getSchemaRules() {
    return SchemaRules;
}

} // namespace kiv::kit
