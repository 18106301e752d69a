/// @file
/// Names and definitions with their translations, of which a page shows one at a time; without the script
/// that switches them, all of them one below the other.
///
///     vTranslatedWrite(def.getDefinition(), def.getDefinitionAliases(), html);
///
/// Ownership: nothing is kept.
/// Threads:   any number of threads, each with its own page.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Format/Ifc/Def/IfcDefAliases.h"
#include "kivifc/Site/Html.h"

#include <string>
#include <string_view>

namespace kiv::kivifc::site {

/// What the attribute `lang` may say: the tag when it has the form of one, language, script and country; else
/// empty.
std::string sLanguageTag(std::string_view language);

/// The text, and beside it its translations for the switch of languages.
void vTranslatedWrite(std::string_view text, const ifc::def::xml::Aliases& aliases, Html& html);

/// The translations of a name that is shown itself whatever the language is; nothing without any.
void vNameTranslationsWrite(const ifc::def::xml::Aliases& aliases, Html& html);

} // namespace kiv::kivifc::site
