/// @file
/// The definitions of sets and their members in other languages, as a script of the site: the pages of
/// entities have the rows of a set again and again, and take a translation from here when a reader has chosen
/// a language.
///
///     vDefinitionsWrite(model, folder); // assets/definitions.js
///
/// The script gives `window.kivDefinitions` an object that Assets/search.js reads:
///
///     {languages: [TEXT...], texts: [TEXT...], sets: [[file, [anchor, language, text...]...]...]}
///
/// Languages and texts are indexes into those lists, in turn. The anchor of the set itself is "".
///
/// Ownership: nothing is kept.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc; what cannot be written is a failure of the folder.
#pragma once

#include "kivifc/Site/SiteFolder.h"
#include "kivifc/Site/SiteModel.h"

namespace kiv::kivifc::site {

void vDefinitionsWrite(const SiteModel& model, SiteFolder& folder);

} // namespace kiv::kivifc::site
