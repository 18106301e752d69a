/// @file
/// A small schema text with every construct that the reader knows, for tests that cut, change or compare
/// whole texts.
#pragma once

#include <string_view>

namespace kiv::test {

inline constexpr std::string_view SampleText = R"((*
a comment before the header
*)
SCHEMA SAMPLE;

TYPE Label = STRING(255) FIXED;
END_TYPE;
TYPE Name = Label;
 WHERE
	Short : LENGTH(SELF) < 10;
END_TYPE;
TYPE Kind = ENUMERATION OF
	(SOLID
	,HOLLOW);
END_TYPE;
TYPE Thing = SELECT
	(Wall, Name
	,Kind);
END_TYPE;
TYPE Grid = LIST [1:?] OF LIST [2:3] OF REAL;
END_TYPE;

ENTITY Root
 ABSTRACT SUPERTYPE OF (ONEOF
	(Wall
	,Door));
	GlobalId : STRING(22);
	Tags : OPTIONAL SET [0:?] OF Label;
 UNIQUE
	UR1 : GlobalId, Tags;
END_ENTITY;

ENTITY Wall
 SUBTYPE OF (Root);
	Sort : OPTIONAL Kind;
	Doors : LIST [0:?] OF UNIQUE Door;
 DERIVE
	SELF\Root.Tags : SET [0:?] OF Label := Plain(
		GlobalId,
		2);
	Size : INTEGER := 3;
 INVERSE
	Of : SET [0:1] OF Door FOR Host;
 WHERE
	SortIsTold : (Sort <> Kind.HOLLOW) OR
		((Sort = Kind.HOLLOW) AND
		EXISTS(SELF\Root.Tags[1]));
	-- a note that is no part of a rule
	Few : {0 <= SIZEOF(QUERY(d <* Doors | d.Host :=: SELF)) < 9}; (* done *)
END_ENTITY;

ENTITY Door
 SUBTYPE OF (Root);
	Host : Wall;
END_ENTITY;

FUNCTION Plain (a : STRING; n : INTEGER) : SET OF Label;
	-- an ENTITY in a body is text

	RETURN (?);
END_FUNCTION;

RULE One FOR (Wall);
 WHERE
	WR1 : SIZEOF(Wall) = 1;
END_RULE;
END_SCHEMA;
)";

} // namespace kiv::test
