// What is wrong with schema texts of hostile shapes: to find it, and where, takes work in proportion to the
// text.

#include "Robustness/Growth/GrowthRow.h"
#include "Support/AssertCollector.h"
#include "Support/SchemaFromText.h"
#include "kiv/Kit/Findings/SchemaFindings.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv::test {

namespace {

std::string sNumbered(std::string_view name, std::size_t number) {
    return std::string(name) + std::to_string(number);
}

std::string sEntity(const std::string& name, const std::string& body) {
    return "ENTITY " + name + "\n" + body + "\nEND_ENTITY;\n";
}

/// That many names that are not declared, each on a line of its own.
std::string sMissingLines(std::size_t count) {
    return sJoined(count, [](std::size_t i) { return sNumbered("Missing", i) + '\n'; });
}

/// With the reading of the text as a whole: the reports are a part of what is looked at.
void vFindingsFind(const std::string& statements) {
    const AssertCollector reports;
    const auto text = "SCHEMA A;\n" + statements + "END_SCHEMA;\n";
    const auto schema = schemaFromWholeText(text);
    const auto findings = kit::schemaFindingsOf(schema.get(), reports.getRecords(), text, "a.exp");
    ASSERT_FALSE(findings.empty());
}

TEST(SchemaFindingsGrowthTest, UndefinedNames) {
    constexpr std::size_t Many = 20'000;
    vGrowthExpect(
        {{"supertypes", Many,
          [](std::size_t count) {
              return sJoined(count, [](std::size_t i) {
                  return sEntity(sNumbered("E", i), " SUBTYPE OF (" + sNumbered("Missing", i) + ");");
              });
          }},
         {"types of one entity", Many,
          [](std::size_t count) {
              return sEntity("E;", sJoined(count, [](std::size_t i) {
                                 return sNumbered("A", i) + " : " + sNumbered("Missing", i) + ";\n";
                             }));
          }},
         {"types of one attribute", Many,
          [](std::size_t count) { return sEntity("E;", " X :\n" + sMissingLines(count) + ";"); }},
         {"types of one type", Many,
          [](std::size_t count) { return "TYPE T =\n" + sMissingLines(count) + ";\nEND_TYPE;\n"; }},
         {"types of one inverse attribute", Many,
          [](std::size_t count) {
              return sEntity("E;", " INVERSE\n X :\n" + sMissingLines(count) + " FOR Y;");
          }},
         {"attributes of one type", Many,
          [](std::size_t count) {
              return sEntity("E;", sJoined(count, [](std::size_t i) { return sNumbered(",A", i); }) +
                                       " : LIST [1:?] OF Missing;");
          }},
         {"redeclared attributes", Many,
          [](std::size_t count) {
              return sEntity("E;", "Z : REAL;") +
                     sEntity("F", " SUBTYPE OF (E);\n DERIVE\n" + sJoined(count, [](std::size_t i) {
                                      return " SELF\\E." + sNumbered("Missing", i) + " : REAL := 1.;\n";
                                  }));
          }},
         {"inverse attributes", Many,
          [](std::size_t count) {
              return sEntity("E;", " INVERSE\n" + sJoined(count, [](std::size_t i) {
                                       return sNumbered("A", i) + " : E FOR " + sNumbered("Missing", i) +
                                              ";\n";
                                   }));
          }},
         {"names in one rule", Many,
          [](std::size_t count) {
              return sEntity("E;", " WHERE\n W : " + sJoined(count, [](std::size_t i) {
                                       return sNumbered("Missing", i) + " + ";
                                   }) + "1 > 0;");
          }},
         {"attributes after a dot", Many,
          [](std::size_t count) {
              return sJoined(count,
                             [](std::size_t i) { return sEntity(sNumbered("E", i) + ";", "A : REAL;"); }) +
                     sEntity("E;", " WHERE\n W : " + sJoined(count, [](std::size_t i) {
                                       return "SELF.A." + sNumbered("Missing", i) + " + ";
                                   }) + "1 > 0;");
          }},
         {"names in one body", Many,
          [](std::size_t count) {
              return "FUNCTION F(A : REAL) : REAL;\n LOCAL\n" +
                     sJoined(count, [](std::size_t i) { return sNumbered("L", i) + " : REAL;\n"; }) +
                     " END_LOCAL;\n" +
                     sJoined(count,
                             [](std::size_t i) {
                                 return sNumbered("Missing", i) + " := REPAET" + sNumbered("", i % 100) +
                                        ";\n";
                             }) +
                     "END_FUNCTION;\n";
          }},
         {"uses of one name", Many,
          [](std::size_t count) {
              return sEntity("E;", sJoined(count,
                                           [](std::size_t i) {
                                               return sNumbered("A", i) + " : SET [1:?] OF Missing;\n";
                                           })) +
                     sEntity("F;", " WHERE\n W : " + sTimes("Missing() + SELF.Gone + ", count) + "1 > 0;");
          }},
         {"items of one type", Many,
          [](std::size_t count) {
              return "TYPE T = ENUMERATION OF (" +
                     sJoined(count, [](std::size_t i) { return sNumbered(i == 0 ? "A" : ",A", i); }) +
                     ");\nEND_TYPE;\n" + sEntity("E;", " WHERE\n W : " + sJoined(count, [](std::size_t i) {
                                                           return "T." + sNumbered("B", i) + " + ";
                                                       }) + "1 > 0;");
          }},
         {"attributes below a long line", Many / 4,
          [](std::size_t count) {
              return sEntity("E0;", "Z : REAL;") + sJoined(count, [](std::size_t i) {
                         return sEntity(sNumbered("E", i + 1), " SUBTYPE OF (" + sNumbered("E", i) +
                                                                   ");\n WHERE\n W : Missing() > 0;");
                     });
          }}},
        vFindingsFind);
}

TEST(SchemaFindingsGrowthTest, WhatIsNotRead) {
    constexpr std::size_t Many = 20'000;
    vGrowthExpect(
        {{"keywords in lower case", Many,
          [](std::size_t count) {
              return sEntity("E;", "") + sJoined(count, [](std::size_t i) {
                         return "entity " + sNumbered("F", i) + ";\nend_entity;\n";
                     });
          }},
         {"declarations on one line", Many,
          [](std::size_t count) {
              return "TYPE " +
                     sJoined(count,
                             [](std::size_t i) { return "ENTITY " + sNumbered("E", i) + "; END_ENTITY; "; }) +
                     "\n";
          }},
         {"missing ends", Many,
          [](std::size_t count) {
              return sJoined(count, [](std::size_t i) { return "ENTITY " + sNumbered("E", i) + ";\n"; });
          }},
         {"comments with keywords", Many,
          [](std::size_t count) {
              return sJoined(
                  count, [](std::size_t i) { return "-- TYPE " + sNumbered("T", i) + "\n-- END_TYPE\n"; });
          }},
         {"attributes without blanks", Many,
          [](std::size_t count) {
              return sEntity("E;",
                             sJoined(count, [](std::size_t i) { return sNumbered("A", i) + ":REAL;\n"; }));
          }},
         {"keywords of types in lower case", Many,
          [](std::size_t count) {
              return sEntity("E;", sJoined(count,
                                           [](std::size_t i) {
                                               return sNumbered("A", i) + " : optional set [1..?] of real;\n";
                                           })) +
                     sEntity("F;", "A : LIST [1:?] OF" + sTimes(" unique", count) + " REAL;");
          }},
         {"brackets that are not closed", Many,
          [](std::size_t count) {
              return sEntity("E;", sTimes("A : SET [9:1] OF LIST [1 OF REAL;\n", count)) +
                     sEntity("F;", "A : " + sTimes("SET [", count) + ";") +
                     sEntity("G;", " DERIVE\n" + sTimes(" A : REAL = SIN(;\n", count));
          }},
         {"lists without brackets", Many,
          [](std::size_t count) {
              return "TYPE T = SELECT" + sTimes(" E\n", count) + ";\nEND_TYPE;\n" +
                     sEntity("E",
                             " SUPERTYPE OF" + sTimes(" (ONE OF F OF G", count) + sTimes(")", count) + ";") +
                     "TYPE U = REAL;\nEND_TYPE;\n";
          }},
         {"types without an equals sign", Many,
          [](std::size_t count) {
              return sJoined(
                  count, [](std::size_t i) { return "TYPE " + sNumbered("T", i) + " : REAL;\nEND_TYPE;\n"; });
          }},
         {"strings of another schema", Many,
          [](std::size_t count) {
              return sEntity("E;", " WHERE\n W : [" + sTimes("'Z.E', ", count) + "'Z.E'] = TYPEOF(SELF);");
          }},
         {"names that are none among other findings", Many,
          [](std::size_t count) {
              return sJoined(count, [](std::size_t i) {
                  return sEntity(sNumbered("_E", i) + ";",
                                 "A:REAL;\n B : Missing;\n C : LIST [2:1] OF REAL;\n WHERE\n W : < ;");
              });
          }},
         {"rules that are refused", Many,
          [](std::size_t count) {
              return sJoined(count, [](std::size_t i) {
                  return sEntity(sNumbered("E", i) + ";", " WHERE\n W : < ;\n V : 1 > 0;");
              });
          }},
         {"comments that nothing closes", Many,
          [](std::size_t count) { return sEntity("E;", "") + sTimes("(* ( * \n", count); }},
         {"comments that nothing closes as often as it should", Many,
          [](std::size_t count) { return sEntity("E;", "") + "(*" + sTimes("(* *) (* \n", count); }},
         {"strings that nothing closes", Many,
          [](std::size_t count) { return sEntity("E;", " WHERE\n" + sTimes(" W : 'open;\n", count)); }}},
        vFindingsFind);
}

TEST(SchemaFindingsGrowthTest, RepeatedAndLongNames) {
    constexpr std::size_t Many = 20'000;
    constexpr std::size_t Megabyte = 1'000'000;
    vGrowthExpect({{"declarations of one name", Many,
                    [](std::size_t count) { return sTimes("ENTITY E;\nEND_ENTITY;\n", count); }},
                   {"attributes of one name", Many,
                    [](std::size_t count) { return sEntity("E;", sTimes("A : REAL;\n", count)); }},
                   {"supertypes of one entity", Many,
                    [](std::size_t count) {
                        return sEntity("E;", "A : REAL;") +
                               sEntity("F", " SUBTYPE OF (E" + sTimes(", E", count) + ");\n WHERE\n W : " +
                                                sTimes("Missing() + ", count) + "1 > 0;");
                    }},
                   {"attributes of an entity with a long name", Megabyte,
                    [](std::size_t size) {
                        return sEntity(std::string(size / 2, 'E') + ";", sTimes("A : Missing;\n", size / 26));
                    }},
                   {"long undefined names", Megabyte,
                    [](std::size_t size) {
                        return sEntity("E;", sTimes("A : " + std::string(size / 100, 'x') + ";\n", 100));
                    }}},
                  vFindingsFind);
}

} // namespace

} // namespace kiv::test
