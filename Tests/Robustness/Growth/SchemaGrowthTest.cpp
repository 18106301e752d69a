// Schema texts of every hostile shape that comes to mind, each at two sizes; what comes of such texts is
// tested in Format/Ifc/Def/Schema/SchemaHostileTest.cpp, here only their cost counts. Where each family is:
//
// - LongLines, LongHeaders: long lines, long names, nested aggregates
// - ManyOfOneKind: entities, types, attributes, items, lists, rules, clauses, schemas
// - EqualNames: names that repeat or differ in letter case only
// - Chains: inheritance, defined types, selects, diamonds of lists and selects
// - Circles: SUBTYPE OF, ONEOF, TYPE, SELECT, LIST, attributes of the own entity
// - RedeclaredAttributes, InverseAttributes: attributes that are looked for along lines of supertypes
// - SelectsOfManyEntitiesAsked...: supertypes that are looked for in lists
// - TypesOfOneTypeThatHasRules: rules of a type, and their reports, times the types that are built on it
// - AttributesAskedForByTheNameOfTheirEntity: attributes of one name, in many entities and in one
// - Rules: operators, signs, powers, qualifiers, lists, brackets
// - RulesThatAreRefused: what the grammar of rules has no place for
// - WhatNeverEnds: brackets, comments, literals and statements without an end
// - DocumentGrowthTest.cpp: aliases, records, classes, members and markup of documents

#include "Robustness/Growth/GrowthRow.h"
#include "Support/AssertCollector.h"
#include "Support/SchemaFromText.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

namespace {

using namespace ifc::def::schema;

std::string sNumbered(std::string_view name, std::size_t number) {
    return std::string(name) + std::to_string(number);
}

/// One name, in another letter case for each number.
std::string sLetterCase(std::size_t number) {
    std::string name = "aaaaaaaaaaaaaaaaaaaaaaaa";
    for (std::size_t bit = 0; bit != name.size(); ++bit)
        name[bit] = ((number >> bit) & 1U) != 0 ? 'A' : 'a';
    return name;
}

/// Reads the schema and asks for each of its names, and for what walks along chains once.
void vSchemaRead(const std::string& statements) {
    const AssertCollector reports;
    const auto schema = schemaFromText(statements);
    ASSERT_FALSE(schema->getObjects().empty());
    const auto& first = *schema->getObjects().front();
    const auto& last = *schema->getObjects().back();
    for (const auto* object : schema->getObjects())
        ASSERT_NE(schema->pObjectFromName(object->getName()), nullptr);
    const auto* entity = Entity::pFrom(&first);
    const auto* other = Entity::pFrom(&last);
    if (entity && other) {
        EXPECT_EQ(Entity::pCommonBaseGet(*entity, *other), Entity::pCommonBaseGet(*other, *entity));
    }
    const auto* type = Type::pFrom(&first);
    const auto* select = type ? dynamic_cast<const DataTypeSelect*>(type->pDataType()) : nullptr;
    if (select)
        select->isCompatible(last);
}

/// An entity with these lines.
std::string sEntity(const std::string& name, const std::string& lines = {}) {
    return "ENTITY " + name + "\n" + lines + "\nEND_ENTITY;\n";
}

/// An entity with this expression as its only rule.
std::string sRule(const std::string& expression) {
    return sEntity("X", " WHERE\n  WR1 : " + expression + ";");
}

std::string sSubtypeOf(std::string_view name, std::size_t number) {
    return " SUBTYPE OF (" + sNumbered(name, number) + ");";
}

std::string sSupertypeOf(const std::string& names) {
    return " SUPERTYPE OF (ONEOF (" + names + "))";
}

std::string sType(const std::string& name, const std::string& underlying) {
    return "TYPE " + name + " = " + underlying + ";\nEND_TYPE;\n";
}

/// A numbered name for each line.
std::string sNames(std::string_view name, std::size_t count) {
    return sJoined(
        count, [&](std::size_t i) { return std::string(i == 0 ? "" : "\n,").append(sNumbered(name, i)); });
}

TEST(SchemaGrowthTest, LongLines) {
    constexpr std::size_t Megabyte = 1'000'000;
    vGrowthExpect(
        {{"name", Megabyte, [](std::size_t size) { return sEntity(std::string(size, 'x')); }},
         {"attribute", Megabyte,
          [](std::size_t size) {
              const std::string mega(size, 'x');
              return sEntity("X", mega + " : " + mega + ";");
          }},
         {"inverse attribute", Megabyte,
          [](std::size_t size) {
              const std::string mega(size, 'x');
              return sEntity("X", " INVERSE\n  " + mega + " : SET OF " + mega + " FOR " + mega + ";");
          }},
         {"uniqueness rule", Megabyte,
          [](std::size_t size) {
              const std::string mega(size, 'x');
              return sEntity("X", " UNIQUE\n  " + mega + " : " + mega + ", " + mega + ";");
          }},
         {"derived attribute", Megabyte,
          [](std::size_t size) {
              const std::string mega(size, 'x');
              return sEntity("X", " DERIVE\n  " + mega + " : " + mega + " := " + mega + ";");
          }},
         {"redeclared attribute", Megabyte,
          [](std::size_t size) {
              const std::string mega(size, 'x');
              return sEntity("X", mega + " : REAL;\n DERIVE\n  SELF\\" + mega + "." + mega + " : REAL := 1;");
          }},
         {"subtype", Megabyte,
          [](std::size_t size) { return sEntity("X", sSupertypeOf(std::string(size, 'x'))); }},
         {"subtypes in one line", Megabyte,
          [](std::size_t size) { return sEntity("X", sSupertypeOf("A" + sTimes(", A", size / 3))); }},
         {"supertype", Megabyte,
          [](std::size_t size) { return sEntity("X", " SUBTYPE OF (" + std::string(size, 'x') + ");"); }},
         {"type", Megabyte, [](std::size_t size) { return sType("X", std::string(size, 'x')); }},
         {"list", Megabyte,
          [](std::size_t size) { return sType("X", "SELECT (" + std::string(size, 'x') + ")"); }},
         {"rule", Megabyte, [](std::size_t size) { return sRule(std::string(size, 'x')); }},
         {"nothing known", Megabyte,
          [](std::size_t size) { return std::string(size, 'x') + "\n" + sEntity("X"); }},
         {"beginnings of keywords", Megabyte,
          [](std::size_t size) { return sTimes("ENTIT", size / 5) + "\n" + sEntity("X"); }},
         {"blanks", Megabyte, [](std::size_t size) { return sType("X", std::string(size, ' ')); }},
         {"aggregates in each other", 100'000,
          [](std::size_t count) { return sType("X", sTimes("LIST OF ", count) + "REAL"); }},
         {"items in one line", 100'000,
          [](std::size_t count) { return sType("X", "ENUMERATION OF (" + sTimes("A, ", count) + "A)"); }}},
        vSchemaRead);
}

TEST(SchemaGrowthTest, LongHeaders) {
    constexpr std::size_t Megabyte = 1'000'000;
    vGrowthExpect({{"name", Megabyte,
                    [](std::size_t size) { return "SCHEMA " + std::string(size, 'x') + ";\nEND_SCHEMA;\n"; }},
                   {"blanks", Megabyte,
                    [](std::size_t size) { return "SCHEMA" + std::string(size, ' ') + "X;\nEND_SCHEMA;\n"; }},
                   {"line before it", Megabyte,
                    [](std::size_t size) { return sTimes("SCHEM", size / 5) + "\nSCHEMA X;\n"; }},
                   {"comment before it", Megabyte,
                    [](std::size_t size) { return "(*" + sTimes("\n*", size / 2) + "\n*)\nSCHEMA X;\n"; }}},
                  [](const std::string& text) { ASSERT_NE(schemaFromWholeText(text), nullptr); });
}

TEST(SchemaGrowthTest, ManyOfOneKind) {
    constexpr std::size_t Many = 50'000;
    vGrowthExpect(
        {{"entities", Many,
          [](std::size_t count) {
              return sJoined(count, [](std::size_t i) { return sEntity(sNumbered("E", i)); });
          }},
         {"types", Many,
          [](std::size_t count) {
              return sJoined(count, [](std::size_t i) { return sType(sNumbered("T", i), "REAL"); });
          }},
         {"functions", Many,
          [](std::size_t count) {
              return sJoined(
                  count, [](std::size_t i) { return sNumbered("FUNCTION F", i) + "\n;\nEND_FUNCTION;\n"; });
          }},
         {"attributes", Many,
          [](std::size_t count) {
              return sEntity("X",
                             sJoined(count, [](std::size_t i) { return sNumbered("A", i) + " : REAL;\n"; }));
          }},
         {"attributes of types that are not shared", Many / 2,
          [](std::size_t count) { return sEntity("X", sTimes("A : LIST [1:?] OF SET OF REAL;\n", count)); }},
         {"attributes with 256 aggregates", 1'000,
          [](std::size_t count) {
              return sEntity("X", sTimes("A : " + sTimes("LIST OF ", 256) + "REAL;\n", count));
          }},
         {"enumeration items", Many,
          [](std::size_t count) { return sType("X", "ENUMERATION OF (" + sNames("I", count) + ")"); }},
         {"select items that name nothing", Many,
          [](std::size_t count) { return sType("X", "SELECT (" + sNames("I", count) + ")"); }},
         {"select items", Many,
          [](std::size_t count) {
              return sType("X", "SELECT (" + sNames("E", count) + ")") +
                     sJoined(count, [](std::size_t i) { return sEntity(sNumbered("E", i)); });
          }},
         {"subtypes", Many,
          [](std::size_t count) {
              return sEntity("X", sSupertypeOf(sNames("E", count))) + sJoined(count, [](std::size_t i) {
                         return sEntity(sNumbered("E", i), " SUBTYPE OF (X);");
                     });
          }},
         {"uniqueness rules", Many,
          [](std::size_t count) { return sEntity("X", " UNIQUE\n" + sTimes("  UR1 : A, B;\n", count)); }},
         {"names in a uniqueness rule", Many,
          [](std::size_t count) { return sEntity("X", " UNIQUE\n  UR1 : A" + sTimes(", A", count) + ";"); }},
         {"inverse attributes", Many,
          [](std::size_t count) {
              return sEntity("X", "A : X;\n INVERSE\n" + sTimes("  I : SET OF X FOR A;\n", count));
          }},
         {"derived attributes", Many,
          [](std::size_t count) {
              return sEntity("X", "A : REAL;\n DERIVE\n" + sTimes("  SELF\\X.A : REAL := 1.0;\n", count));
          }},
         {"rules", Many,
          [](std::size_t count) { return sEntity("X", " WHERE\n" + sTimes("  WR1 : A > 1;\n", count)); }},
         {"clauses of rules in one entity", Many,
          [](std::size_t count) { return sEntity("X", sTimes(" WHERE\n  WR1 : A > 1;\n--END_\n", count)); }},
         {"lines of a derived value", Many,
          [](std::size_t count) {
              return sEntity("X", " DERIVE\n  D : REAL := 1.0" + sTimes("\n + 1.0", count) + ";");
          }},
         {"lines of a body", Many,
          [](std::size_t count) { return "FUNCTION X\n" + sTimes("x := 1;\n", count) + "END_FUNCTION;"; }},
         {"schemas", 20'000,
          [](std::size_t count) {
              return sEntity("X") + sTimes("END_SCHEMA;\nSCHEMA B;\n" + sEntity("X"), count);
          }},
         {"empty lines", 10 * Many,
          [](std::size_t count) { return sEntity("X", std::string(count, '\n')); }}},
        vSchemaRead);
}

TEST(SchemaGrowthTest, EqualNames) {
    constexpr std::size_t Many = 50'000;
    vGrowthExpect(
        {{"entities", Many, [](std::size_t count) { return sTimes(sEntity("X"), count); }},
         {"types", Many, [](std::size_t count) { return sTimes(sType("X", "REAL"), count); }},
         {"types of their own name", Many, [](std::size_t count) { return sTimes(sType("X", "X"), count); }},
         {"entities below their own name", Many,
          [](std::size_t count) {
              return sTimes(sEntity("X", sSupertypeOf("X") + "\n SUBTYPE OF (X);"), count);
          }},
         {"names that differ in letter case", 1U << 15,
          [](std::size_t count) {
              return sJoined(count, [](std::size_t i) { return sEntity(sLetterCase(i)); });
          }},
         {"attributes", Many, [](std::size_t count) { return sEntity("X", sTimes("A : REAL;\n", count)); }},
         {"attributes of many entities", Many,
          [](std::size_t count) {
              return sJoined(count, [](std::size_t i) { return sEntity(sNumbered("E", i), "A : REAL;"); });
          }},
         {"enumeration items", Many,
          [](std::size_t count) { return sType("X", "ENUMERATION OF (A" + sTimes("\n,A", count) + ")"); }},
         {"select items", Many,
          [](std::size_t count) { return sType("X", "SELECT (X" + sTimes("\n,X", count) + ")"); }},
         {"subtypes", Many,
          [](std::size_t count) { return sEntity("X", sSupertypeOf("X" + sTimes("\n,X", count))); }}},
        vSchemaRead);
}

TEST(SchemaGrowthTest, Chains) {
    constexpr std::size_t Long = 20'000;
    const auto below = [](std::size_t count, const std::string& lines) {
        return sEntity("E0", "A : REAL;") + sJoined(count, [&](std::size_t i) {
                   return sEntity(sNumbered("E", i + 1), sSubtypeOf("E", i) + "\n" + lines);
               });
    };
    vGrowthExpect(
        {{"supertypes", Long, [=](std::size_t count) { return below(count, ""); }},
         {"supertypes and subtypes", Long,
          [](std::size_t count) {
              return sJoined(count, [](std::size_t i) {
                  return sEntity(sNumbered("E", i + 1),
                                 sSupertypeOf(sNumbered("E", i + 2)) + "\n" + sSubtypeOf("E", i));
              });
          }},
         {"supertypes from the bottom to the top", Long,
          [](std::size_t count) {
              return sJoined(count, [count](std::size_t i) {
                  return sEntity(sNumbered("E", count - i), sSubtypeOf("E", count - i - 1));
              });
          }},
         {"supertypes that derive", Long,
          [=](std::size_t count) { return below(count, " DERIVE\n  D : REAL := 1.0;"); }},
         {"types", Long,
          [](std::size_t count) {
              return sJoined(count,
                             [](std::size_t i) { return sType(sNumbered("T", i), sNumbered("T", i + 1)); });
          }},
         {"selects of selects", Long,
          [](std::size_t count) {
              return sJoined(count, [](std::size_t i) {
                  return sType(sNumbered("S", i), "SELECT (" + sNumbered("S", i + 1) + ")");
              });
          }},
         {"selects of two selects each", Long / 2,
          [](std::size_t count) {
              return sJoined(count, [](std::size_t i) {
                  const auto next = "SELECT (" + sNumbered("A", i + 1) + ", " + sNumbered("B", i + 1) + ")";
                  return sType(sNumbered("A", i), next) + sType(sNumbered("B", i), next);
              });
          }},
         {"subtype lists of two entities each", Long / 2,
          [](std::size_t count) {
              return sJoined(count, [](std::size_t i) {
                  const auto next = sSupertypeOf(sNumbered("A", i + 1) + ", " + sNumbered("B", i + 1)) +
                                    "\n" + (i == 0 ? "" : sSubtypeOf("A", i - 1));
                  return sEntity(sNumbered("A", i), next) + sEntity(sNumbered("B", i), next);
              });
          }}},
        vSchemaRead);
}

TEST(SchemaGrowthTest, Circles) {
    constexpr std::size_t Long = 20'000;
    vGrowthExpect({{"supertypes", Long,
                    [](std::size_t count) {
                        return sJoined(count, [count](std::size_t i) {
                            return sEntity(sNumbered("E", i), sSubtypeOf("E", (i + 1) % count));
                        });
                    }},
                   {"subtypes", Long,
                    [](std::size_t count) {
                        return sJoined(count, [count](std::size_t i) {
                            return sEntity(sNumbered("E", i), sSupertypeOf(sNumbered("E", (i + 1) % count)));
                        });
                    }},
                   {"types", Long,
                    [](std::size_t count) {
                        return sJoined(count, [count](std::size_t i) {
                            return sType(sNumbered("T", i), sNumbered("T", (i + 1) % count));
                        });
                    }},
                   {"selects", Long,
                    [](std::size_t count) {
                        return sJoined(count, [count](std::size_t i) {
                            return sType(sNumbered("S", i),
                                         "SELECT (" + sNumbered("S", (i + 1) % count) + ")");
                        });
                    }},
                   {"lists", Long,
                    [](std::size_t count) {
                        return sJoined(count, [count](std::size_t i) {
                            return sType(sNumbered("L", i), "LIST OF " + sNumbered("L", (i + 1) % count));
                        });
                    }},
                   {"lists of their own type", Long,
                    [](std::size_t count) {
                        return sJoined(count, [](std::size_t i) {
                            return sType(sNumbered("L", i), "LIST OF " + sNumbered("L", i));
                        });
                    }},
                   {"selects of their own type", Long,
                    [](std::size_t count) {
                        return sJoined(count, [](std::size_t i) {
                            return sType(sNumbered("S", i), "SELECT (" + sNumbered("S", i) + ")");
                        });
                    }},
                   {"types, selects and lists", Long,
                    [](std::size_t count) {
                        return sJoined(count, [count](std::size_t i) {
                            return sType(sNumbered("S", i),
                                         "SELECT (" + sNumbered("T", i) + ", " + sNumbered("L", i) + ")") +
                                   sType(sNumbered("L", i), "LIST OF " + sNumbered("T", i)) +
                                   sType(sNumbered("T", i), sNumbered("S", (i + 1) % count));
                        });
                    }},
                   {"attributes of the own entity", Long,
                    [](std::size_t count) {
                        return sJoined(count, [](std::size_t i) {
                            const auto name = sNumbered("E", i);
                            return sEntity(name, "A : LIST OF " + name + ";\n INVERSE\n  I : SET OF " + name +
                                                     " FOR A;");
                        });
                    }}},
                  vSchemaRead);
}

/// How many rules of the entity were read, and how many reports that took.
void vRulesExpect(const std::string& statements, std::size_t rules, std::size_t reported) {
    const AssertCollector reports;
    const auto schema = schemaFromText(statements);
    EXPECT_EQ(entityOf(*schema, "X").pWhere()->getRules().size(), rules);
    EXPECT_EQ(reports.getMessages().size(), reported);
}

TEST(SchemaGrowthTest, Rules) {
    constexpr std::size_t Long = 50'000;
    const auto chain = [](std::string_view link) {
        return [=](std::size_t count) { return sRule("a" + sTimes(link, count)); };
    };
    vGrowthExpect(
        {{"operators", Long, chain(" + a")},
         {"operators of two levels", Long, chain(" + a * a")},
         {"operators, one a line", Long, chain("\n OR a")},
         {"powers", Long, chain(" * a ** a")},
         {"powers in parentheses", Long, chain(" + (a ** a)")},
         {"relations in parentheses", Long, chain(" AND (a < a)")},
         {"relations as arguments", Long,
          [](std::size_t count) { return sRule("f(a < a" + sTimes(", a IN a", count) + ")"); }},
         {"signs", Long, chain(" + -a")},
         {"signs of parentheses", Long, chain(" - (+a)")},
         {"negations", Long, chain(" AND NOT a")},
         {"attributes", Long, chain(".a")},
         {"groups", Long, chain("\\a")},
         {"indices", Long, chain("[1]")},
         {"index ranges", Long, chain("[1:a]")},
         {"exponents without digits", Long, chain("+1.0E-a")},
         {"elements", Long, [](std::size_t count) { return sRule("[a" + sTimes(", a", count) + "]"); }},
         {"elements with a dropped sign", Long,
          [](std::size_t count) { return sRule("[a" + sTimes(", a :<b", count) + "]"); }},
         {"arguments", Long, [](std::size_t count) { return sRule("f(a" + sTimes(", a", count) + ")"); }},
         {"calls", Long, [](std::size_t count) { return sRule("f()" + sTimes("+ f(a)", count)); }},
         {"queries", Long / 2, chain(" + SIZEOF(QUERY(b <* a | b = a))")},
         {"intervals", Long, chain(" OR {a < a <= a}")},
         {"literals", Long, chain(" + 'a'")},
         {"brackets side by side", Long / 2, chain(" + (a) + [a] + a[1] + X.a")},
         {"mixed brackets", Long / 2, chain(" + f([(a), X(a[1])], {a < (a) < [a]})")},
         {"digits", Long, [](std::size_t count) { return sRule("1." + std::string(10 * count, '1')); }}},
        [](const std::string& text) { vRulesExpect(text, 1, 0); });
}

// They end at the second operator, and at the level that is one too deep.
TEST(SchemaGrowthTest, RulesThatAreRefused) {
    constexpr std::size_t Long = 50'000;
    std::vector<GrowthRow> rows;
    for (const std::string_view piece : {"a ** ", "a < ", "a IN ", "+ ", "NOT ", "[a][1] + ", "'a' "})
        rows.push_back({std::string(piece) + "again and again", Long,
                        [=](std::size_t count) { return sRule(sTimes(piece, count) + "a"); }});
    vGrowthExpect(rows, [](const std::string& text) { vRulesExpect(text, 0, 1); });
}

TEST(SchemaGrowthTest, WhatNeverEnds) {
    constexpr std::size_t Long = 1'000'000;
    std::vector<GrowthRow> rows;
    const auto rowsAdd = [&](const std::string& name, const std::function<std::string(std::size_t)>& text) {
        rows.push_back({"rule of " + name, Long, [=](std::size_t size) { return sRule(text(size)); }});
        rows.push_back({"rule that ends in " + name, Long,
                        [=](std::size_t size) { return sRule("a + " + text(size)); }});
        rows.push_back(
            {"statements after " + name, Long, [=](std::size_t size) { return sEntity("X") + text(size); }});
    };
    for (const std::string_view open :
         {"(", "[", "{", "f(", "QUERY(", "QUERY(a <* b | ", "([{", "(f([a, {a < a[", ")", "]", "}", "([)]",
          "(*", "--", ";", ":", "(* ", "-- x\n", "(*\n"})
        rowsAdd(std::string(open), [=](std::size_t size) { return sTimes(open, size / open.size()); });
    // One quote more than are in pairs, so that the last literal has no end.
    for (const std::string_view closed : {"", "'x' + ", "'x'\n + "})
        for (const std::string_view inside : {"x", "x\n", " ;\n"})
            rowsAdd("literals " + std::string(closed) + "'" + std::string(inside), [=](std::size_t size) {
                return sTimes(closed, size / 16) + "'" + sTimes(inside, size / 4);
            });
    for (const std::string_view list : {"(a", "[a, a", "f(a, a", "{a < a", "QUERY(a <* b | a"})
        rowsAdd("a long " + std::string(list), [=](std::size_t size) {
            return std::string(list) + sTimes(list.find(',') < list.size() ? ", a" : " + a", size / 4);
        });
    for (const std::string_view statement : {"TYPE", "ENTITY X\n", "ENTITY X\n WHERE\n WR1 : a",
                                             "ENTITY X\n DERIVE\n D : a\n", "FUNCTION X\n", "RULE X\n"})
        rows.push_back({std::string(statement), Long,
                        [=](std::size_t size) { return std::string(statement) + sTimes("\n x", size / 3); }});
    vGrowthExpect(rows, vSchemaRead);
}

// Each attribute is looked for in an entity and then in all above it, the nearest first.
TEST(SchemaGrowthTest, RedeclaredAttributes) {
    constexpr std::size_t Long = 20'000;
    const auto below = [](std::size_t number, const std::string& lines) {
        return sEntity(sNumbered("E", number + 1), sSubtypeOf("E", number) + "\n" + lines);
    };
    const auto line = [=](std::size_t count, const std::string& lines) {
        return sEntity("E0", "A : REAL;") + sJoined(count, [&](std::size_t i) { return below(i, lines); });
    };
    const auto redeclared = [](const std::string& name) { return "  SELF\\X." + name + " : REAL := 1;\n"; };
    const auto derive = [=](const std::string& name) { return " DERIVE\n" + redeclared(name); };
    const auto entity = [=](std::size_t count, const std::function<std::string(std::size_t)>& name) {
        return sEntity("X", sJoined(count, [&](std::size_t i) { return name(i) + " : REAL;\n"; }) +
                                " DERIVE\n" +
                                sJoined(count, [&](std::size_t i) { return redeclared(name(i)); }));
    };
    vGrowthExpect(
        {{"from the root", Long, [=](std::size_t count) { return line(count, derive("A")); }},
         {"from nowhere", Long, [=](std::size_t count) { return line(count, derive("B")); }},
         {"from entities of the same name", Long,
          [=](std::size_t count) { return sTimes(sEntity("X", " SUBTYPE OF (X);\n" + derive("A")), count); }},
         {"that each entity declares", Long,
          [=](std::size_t count) { return line(count, "A : REAL;\n" + derive("A")); }},
         {"that the upper half declares", Long,
          [=](std::size_t count) {
              return line(count / 2, "A : REAL;") +
                     sJoined(count / 2, [&](std::size_t i) { return below(count / 2 + i, derive("A")); });
          }},
         {"of other names each", Long,
          [=](std::size_t count) {
              return sEntity("E0") + sJoined(count, [&](std::size_t i) {
                         return below(i, sNumbered("A", i) + " : REAL;\n" + derive(sNumbered("A", i / 2)));
                     });
          }},
         {"by many that are side by side below a line", Long,
          [=](std::size_t count) {
              return line(count, "") + sJoined(count, [&](std::size_t i) {
                         return sEntity(sNumbered("F", i), sSubtypeOf("E", count) + "\n" + derive("A"));
                     });
          }},
         {"of an entity that has as many subtypes", Long,
          [=](std::size_t count) {
              return sEntity("X",
                             sJoined(count, [](std::size_t i) { return sNumbered("A", i) + " : REAL;\n"; })) +
                     sJoined(count, [&](std::size_t i) {
                         return sEntity(sNumbered("E", i), " SUBTYPE OF (X);\n" + derive(sNumbered("A", i)));
                     });
          }},
         {"of a circle", Long,
          [=](std::size_t count) {
              return sJoined(count, [=](std::size_t i) {
                  return sEntity(sNumbered("E", i), sSubtypeOf("E", (i + 1) % count) + "\n" + derive("A"));
              });
          }},
         {"of the own entity", Long,
          [=](std::size_t count) { return entity(count, [](std::size_t i) { return sNumbered("A", i); }); }},
         {"of the own entity, all of one name", Long,
          [=](std::size_t count) { return entity(count, [](std::size_t) { return std::string("A"); }); }},
         {"of the own entity, in other letter case each", 1U << 15,
          [=](std::size_t count) { return entity(count, sLetterCase); }},
         {"of the own entity, with long names that differ in the middle", 5'000,
          [=](std::size_t count) {
              return entity(count, [](std::size_t i) {
                  const std::string half(500, 'x');
                  return half + std::to_string(i) + half;
              });
          }}},
        vSchemaRead);
}

TEST(SchemaGrowthTest, InverseAttributes) {
    constexpr std::size_t Long = 20'000;
    const auto line = [](std::size_t count, const std::string& lines) {
        return sEntity("E0", "A : X;") + sJoined(count, [&](std::size_t i) {
                   return sEntity(sNumbered("E", i + 1), sSubtypeOf("E", i) + "\n" + lines);
               });
    };
    const auto inverse = [](std::size_t count, const std::function<std::string(std::size_t)>& referred) {
        return sEntity("X", " INVERSE\n" + sJoined(count, [&](std::size_t i) {
                                return "  I : " + referred(i) + ";\n";
                            }));
    };
    const auto entity = [=](std::size_t count, const std::function<std::string(std::size_t)>& name) {
        return sEntity("E", sJoined(count, [&](std::size_t i) { return name(i) + " : X;\n"; })) +
               inverse(count, [&](std::size_t i) { return "SET OF E FOR " + name(i); });
    };
    vGrowthExpect(
        {{"to nowhere", Long,
          [=](std::size_t count) {
              return line(count, "") +
                     inverse(count, [&](std::size_t) { return sNumbered("E", count) + " FOR B"; });
          }},
         {"to the root of a line", Long,
          [=](std::size_t count) {
              return line(count, "") +
                     inverse(count, [](std::size_t i) { return sNumbered("E", i) + " FOR A"; });
          }},
         {"to a line of one name", Long,
          [=](std::size_t count) {
              return line(count, "A : X;") +
                     inverse(count, [](std::size_t i) { return sNumbered("E", i) + " FOR A"; });
          }},
         {"to one entity", Long,
          [=](std::size_t count) { return entity(count, [](std::size_t i) { return sNumbered("A", i); }); }},
         {"to one entity, in other letter case each", 1U << 15,
          [=](std::size_t count) { return entity(count, sLetterCase); }}},
        vSchemaRead);
}

// Each member that is an entity may be one of the supertypes of the object.
TEST(SchemaGrowthTest, SelectsOfManyEntitiesAskedForTheEndOfALongLine) {
    constexpr std::size_t Long = 20'000;
    const auto line = [](std::size_t count) {
        return sJoined(count, [](std::size_t i) { return sEntity(sNumbered("M", i)); }) + sEntity("E0") +
               sJoined(count,
                       [](std::size_t i) { return sEntity(sNumbered("E", i + 1), sSubtypeOf("E", i)); });
    };
    vGrowthExpect(
        {{"members", Long,
          [=](std::size_t count) { return sType("S", "SELECT (" + sNames("M", count) + ")") + line(count); }},
         {"members of selects among the members", Long,
          [=](std::size_t count) {
              return sType("S", "SELECT (" + sNames("T", count) + ")") +
                     sJoined(count,
                             [](std::size_t i) {
                                 return sType(sNumbered("T", i), "SELECT (" + sNumbered("M", i) + ")");
                             }) +
                     line(count);
          }}},
        vSchemaRead);
}

/// Counts the reports, as keeping their texts costs more than the texts that they are about.
class CountingSink final : public kiv::assert::Sink {
public:
    void vReport(const kiv::assert::AssertInfo&) override { ++count_; }

    std::size_t getCount() const { return count_; }

private:
    std::size_t count_ = 0;
};

// The rules of a type are there once more for each type that is resolved through it, and so are the reports
// about them.
TEST(SchemaGrowthTest, TypesOfOneTypeThatHasRules) {
    constexpr std::size_t Many = 20'000;
    const auto types = [](std::size_t count, const std::string& rules) {
        return "TYPE T = REAL;\n WHERE\n" + rules + "END_TYPE;\n" +
               sJoined(count, [](std::size_t i) { return sType(sNumbered("D", i), "T"); });
    };
    const auto rules = [](std::size_t count) { return sTimes("  WR1 : SELF > 0;\n", count); };
    const auto check = [](const std::string& text) {
        CountingSink sink;
        const kiv::assert::ScopedSink installed(sink);
        const auto schema = schemaFromText(text);
        const auto* const type = Type::pFrom(schema->pObjectFromName("T"));
        ASSERT_NE(type, nullptr);
        const auto resolved = type->getDerivedTypes().size() + 1;
        EXPECT_EQ(type->pWhere()->getRules().size() % resolved, 0U);
        EXPECT_EQ(sink.getCount() % resolved, 0U);
        EXPECT_GE(type->pWhere()->getRules().size() + sink.getCount(), resolved);
    };
    vGrowthExpect(
        {{"derived types", Many, [=](std::size_t count) { return types(count, rules(1)); }},
         {"rules and derived types", Many, [=](std::size_t count) { return types(count, rules(count)); }},
         {"long rule and derived types", Many,
          [=](std::size_t count) { return types(count, "  WR1 : a" + sTimes(" + a", count) + ";\n"); }},
         {"rules, the last refused, and derived types", Many,
          [=](std::size_t count) { return types(count, rules(count) + "  WR2 : ;\n"); }},
         {"refused rule and derived types", Many,
          [=](std::size_t count) { return types(count, "  WR1 : a" + sTimes(" + a", count) + " +;\n"); }},
         {"lines of derived types", Many,
          [=](std::size_t count) {
              return types(1, rules(count)) + sJoined(count, [](std::size_t i) {
                         return "TYPE " + sNumbered("D", i + 1) + " = " + sNumbered("D", i) + ";\n WHERE\n" +
                                "  WR1 : SELF > 0;\nEND_TYPE;\n";
                     });
          }}},
        check);
}

TEST(SchemaGrowthTest, AttributesAskedForByTheNameOfTheirEntity) {
    constexpr std::size_t Many = 20'000;
    const auto entities = [](std::size_t count, const std::function<std::string(std::size_t)>& lines) {
        return sJoined(count, [&](std::size_t i) { return sEntity(sNumbered("E", i), lines(i)); }) +
               sEntity("NONE");
    };
    const auto isOne = [](const std::string& text) { return [text](std::size_t) { return text; }; };
    // Each by the names of its entity and of itself, and one that no entity has.
    const auto attributesAsk = [](const std::string& text) {
        const AssertCollector reports;
        const auto schema = schemaFromText(text);
        for (const auto* object : schema->getObjects()) {
            const std::string name(object->getName());
            for (const auto& attribute : Entity::pFrom(object)->getAttributes())
                ASSERT_NE(schema->pAttributeGet(name, std::string(attribute.getName())), nullptr);
            ASSERT_EQ(schema->pAttributeGet(name, "C"), nullptr);
        }
        ASSERT_EQ(schema->pAttributeGet("NONE", "A"), nullptr);
    };
    vGrowthExpect(
        {{"of one name", Many, [=](std::size_t count) { return entities(count, isOne("A : REAL;\n")); }},
         {"of one name, along a line of supertypes", Many,
          [=](std::size_t count) {
              return entities(count, [](std::size_t i) {
                  return (i == 0 ? "" : sSubtypeOf("E", i - 1)) + "\nA : REAL;\n";
              });
          }},
         {"of one name in one entity", Many,
          [](std::size_t count) { return sEntity("E", sTimes("A : REAL;\n", count)) + sEntity("NONE"); }},
         {"of other names in one entity", Many,
          [](std::size_t count) {
              return sEntity("E",
                             sJoined(count, [](std::size_t i) { return sNumbered("A", i) + " : REAL;\n"; })) +
                     sEntity("NONE");
          }}},
        attributesAsk);
}

} // namespace

} // namespace kiv::test
