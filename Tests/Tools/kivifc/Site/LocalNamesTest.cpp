#include "kivifc/Site/LocalNames.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kiv::kivifc::site::test {

namespace {

/// The text with its local names in brackets.
std::string sMarked(std::string_view text) {
    std::string marked;
    LocalNames locals;
    for (ExpressWords words(text); words.boNext();) {
        const std::string piece(words.getText());
        marked += locals.boTake(words) ? "<" + piece + ">" : piece;
    }
    return marked;
}

/// Local names that have a type, each time they are there: "a:REAL a:REAL".
std::string sTyped(std::string_view text) {
    std::string typed;
    LocalNames locals;
    for (ExpressWords words(text); words.boNext();) {
        const std::string piece(words.getText());
        if (locals.boTake(words) && !locals.typeOf(piece).empty())
            typed += (typed.empty() ? "" : " ") + piece + ":" + std::string(locals.typeOf(piece));
    }
    return typed;
}

/// The type comes after the names, so that they have it where they are used.
TEST(LocalNames, HaveTheTypeOfTheirDeclaration) {
    EXPECT_EQ(
        sTyped(
            "FUNCTION F (A, B : Wall; C : LIST [1:?] OF Door) : REAL; LOCAL D : Roof := A; E : SET OF Wall; "
            "END_LOCAL; RETURN (A + B + C[1] + D + E); END_FUNCTION;"),
        "A:WALL A:WALL B:WALL C:DOOR D:ROOF E:WALL");
    // The variable of a query has none, not even that of a parameter of its name.
    EXPECT_EQ(sTyped("FUNCTION F (A : Wall) : REAL; RETURN (A + QUERY (A <* X | A) + A); END_FUNCTION;"),
              "A:WALL A:WALL");
}

/// Who reads the text says what is searched; the variable of the query around it keeps its own type.
TEST(LocalNames, VariableOfAQueryHasTheTypeThatItIsGiven) {
    std::string typed;
    LocalNames locals;
    for (ExpressWords words("QUERY (A <* Doors | A = QUERY (B <* Walls | B = A)) = A; x | x");
         words.boNext();) {
        const std::string piece(words.getText());
        const bool isLocal = locals.boTake(words);
        if (piece.find('|') != std::string::npos)
            locals.vQueryTypeSet(typed.empty() ? "DOOR" : "WALL");
        if (isLocal && !locals.typeOf(piece).empty())
            typed += piece + ":" + std::string(locals.typeOf(piece)) + " ";
    }
    EXPECT_EQ(typed, "A:DOOR B:WALL A:DOOR ");
}

/// Each is written with the names in brackets that are local.
TEST(LocalNames, AreThoseThatTheTextDeclares) {
    for (const std::string marked :
         {// Parameters, in any letter case, and what comes after a point is never one.
          "FUNCTION F (<Top>, <Low> : REAL; <It> : Wall) : Wall; RETURN (<TOP> + Wall.Low + <low>.Top);",
          "PROCEDURE P (VAR <a> : REAL; <b> : REAL); <b> := <a>; END_PROCEDURE;",
          "FUNCTION F : Top; RETURN (Top); END_FUNCTION;",
          // Local variables and constants.
          "FUNCTION F : Low; LOCAL <Top> : INTEGER := Wall; <x>, <y> : LIST [1:Wall] OF Door; END_LOCAL; "
          "<Top> := Low; <x>[<Top>] := <y>; END_FUNCTION;",
          "FUNCTION F : Low; CONSTANT <Wall> : REAL := 1.0; END_CONSTANT; RETURN (<Wall>);",
          // Labels of types.
          "FUNCTION F (<a> : GENERIC : <Top>; <b> : AGGREGATE : <Low> OF Wall) : <Top>;",
          "FUNCTION F (<a> : GENERIC) : Top;",
          // Of a query, an alias and a repetition, as long as these last.
          "Wall IN QUERY (<Wall> <* Door.Wall[1] | (<Wall> > 1) AND F(<wall>)) AND Wall",
          "QUERY (<a> <* QUERY (<a> <* b | <a>) | <a>) + a",
          "ALIAS <Top> FOR x; <Top> := 1; END_ALIAS; Top := 2;",
          "REPEAT <Top> := 1 TO Low; <Top> := 1; END_REPEAT; Top := 2;",
          "REPEAT WHILE Top > 1; Top := 2; END_REPEAT;", "REPEAT; Top := 2; END_REPEAT;",
          // Within functions; those outside stay known.
          "FUNCTION F (<a> : REAL) : REAL; FUNCTION <G> (<b> : REAL) : REAL; RETURN (<a> + <b>); "
          "END_FUNCTION; RETURN (<G>(<a>) + b); END_FUNCTION; a",
          // Of rules: labels are no names for what comes after.
          "RULE R FOR (Wall, Door); LOCAL <Top> : REAL; END_LOCAL; <Top> := SIZEOF(Wall); WHERE "
          "<Door> : <Top> > SIZEOF(Door); <Low>: TRUE; Top2 := 1; END_RULE; Top",
          // Entities that attributes are declared in, and types: no variable is one.
          "FUNCTION F (<Wall> : Wall; <x> : LIST [1:3] OF Wall) : Wall; LOCAL <y> : SET OF Wall := [<Wall>]; "
          "END_LOCAL; RETURN (<Wall>\\Wall.Size); END_FUNCTION;"}) {
        std::string text;
        bool isQuery = false;
        for (std::size_t at = 0; at < marked.size(); ++at) {
            const auto rest = std::string_view(marked).substr(at);
            // "<*" is a symbol of EXPRESS, and so are the comparisons here, which have blanks around them.
            isQuery = rest.starts_with("<*") || rest.starts_with("> 1") || rest.starts_with("> S");
            if (isQuery || (marked[at] != '<' && marked[at] != '>'))
                text += marked[at];
        }
        EXPECT_EQ(sMarked(text), marked);
    }
}

/// A mistake in a text is no reason to take names of what comes after it for local ones.
TEST(LocalNames, EndWithTheFunctionThatIsNotWellFormed) {
    EXPECT_EQ(sMarked("FUNCTION F (a : REAL) : REAL; RETURN (QUERY (b <* a | b; END_FUNCTION; a b"),
              "FUNCTION F (<a> : REAL) : REAL; RETURN (QUERY (<b> <* <a> | <b>; END_FUNCTION; a b");
    // The alias that nothing ends does, with the repetition around it.
    EXPECT_EQ(sMarked("REPEAT a := 1 TO 2; ALIAS b FOR x; b; END_REPEAT; a b; END_ALIAS; a b"),
              "REPEAT <a> := 1 TO 2; ALIAS <b> FOR x; <b>; END_REPEAT; a b; END_ALIAS; a b");
    EXPECT_EQ(sMarked("END_FUNCTION; )))) END_REPEAT; END_ALIAS; a"),
              "END_FUNCTION; )))) END_REPEAT; END_ALIAS; a");
}

} // namespace

} // namespace kiv::kivifc::site::test
