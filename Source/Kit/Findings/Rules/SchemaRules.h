/// @file
/// The rules about schemas: the names that are used in one, and what the library passes over.
///
///     for (const auto& rule : getSchemaRules())
///         std::cout << rule.code << ' ' << rule.summary << '\n';
///
/// Private to the kit.
///
/// Ownership: the table lives as long as the process.
/// Threads:   any number of threads.
/// Errors:    the checks throw std::bad_alloc.
#pragma once

#include "Kit/Findings/SchemaRun.h"
#include "kiv/Kit/Findings/Rule.h"

#include <span>

namespace kiv::kit {

/// In the order of their codes.
std::span<const Rule> getSchemaRules();

/// E001; false when nothing else can be said of the text.
bool boSomethingFound(SchemaRun& run);
/// E002 to E005: declarations that are lost, and what takes them.
void vLostDeclarationsCheck(SchemaRun& run);
/// E006 and E007: parts of declarations that are lost, and WHERE rules that are lost or cut.
void vLostPartsCheck(SchemaRun& run);
/// E006 of a keyword that is misspelt, which explains other E006 and E007: they have to be found before.
void vMisspeltKeywordsCheck(SchemaRun& run);
/// E020: names with characters that names do not have.
void vIllegalNamesCheck(SchemaRun& run);
/// E021: entities and types that are defined by themselves.
void vCirclesCheck(SchemaRun& run);
/// E022: types and lists of names that lack a sign or a name. What comes of that, E006, has to be found
/// before.
void vGapsCheck(SchemaRun& run);
/// E008: a comment that nothing closes.
void vOpenCommentCheck(SchemaRun& run);
/// E019: a schema that END_SCHEMA does not end.
void vSchemaEndCheck(SchemaRun& run);
/// E009: statements without ";". What comes of that, E006 and E007, has to be found before.
void vSemicolonsCheck(SchemaRun& run);
/// E010: names declared twice.
void vNamesDeclaredTwiceCheck(SchemaRun& run);
/// E011 to E017: names that declarations use. A name that is missing has one finding, with the code and at
/// the place of its first use, whatever codes the other uses would have had; those are notes.
void vUsedNamesCheck(SchemaRun& run);
/// E018: names that expressions use. Where a declaration uses the name too, that is the finding, even when
/// the expression comes first: there data is lost.
void vExpressionNamesCheck(SchemaRun& run);
/// E023: texts between declarations. What explains them has to be found before.
void vStrayTextsCheck(SchemaRun& run);
/// E024: statements in bodies that lack THEN or their end. What is misspelt there, E018, has to be found
/// before.
void vBodiesCheck(SchemaRun& run);
/// E005 of a declaration without its first line, and E002 of one without a name, take the finding about the
/// name that is lost. The text that is left does not say which name that is: it is taken to be the one that
/// is missing, where a single one is, and a single declaration lacks its name.
void vLostNameTake(SchemaRun& run);
/// E019 of a file that seems to be cut off takes the names that are not declared, as they may be in the part
/// that is lost.
void vCutOffTake(SchemaRun& run);
/// R090: what the library reports and no rule explains.
void vOtherReportsAdd(SchemaRun& run);

} // namespace kiv::kit
