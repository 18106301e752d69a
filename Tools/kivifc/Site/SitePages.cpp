#include "kivifc/Site/SitePages.h"

#include "kivifc/Site/Assets.h"
#include "kivifc/Site/DefinitionsFile.h"
#include "kivifc/Site/EntityPage.h"
#include "kivifc/Site/GuidIndexPages.h"
#include "kivifc/Site/LanguageIndexPages.h"
#include "kivifc/Site/ObjectIndexPages.h"
#include "kivifc/Site/PropertyIndexPages.h"
#include "kivifc/Site/SearchIndexFile.h"
#include "kivifc/Site/SetIndexPage.h"
#include "kivifc/Site/SetPage.h"
#include "kivifc/Site/StartPage.h"
#include "kivifc/Site/TextPage.h"
#include "kivifc/Site/TypePage.h"

#include <array>

namespace kiv::kivifc::site {

namespace {

using Write = void (*)(const SiteModel& model, SiteFolder& folder);

constexpr std::array Kinds{
    Write{vStartPageWrite},          Write{vEntityPagesWrite},    Write{vTypePagesWrite},
    Write{vFunctionPagesWrite},      Write{vRulePagesWrite},      Write{vSetPagesWrite},
    Write{vObjectIndexPagesWrite},   Write{vSetIndexPageWrite},   Write{vPropertyIndexPagesWrite},
    Write{vLanguageIndexPagesWrite}, Write{vGuidIndexPagesWrite}, Write{vSearchIndexWrite},
    Write{vDefinitionsWrite}};

} // namespace

void vSitePagesWrite(const SiteModel& model, SiteFolder& folder) {
    for (const auto write : Kinds)
        write(model, folder);
    for (const auto& asset : getAssets())
        folder.vWrite(asset);
}

} // namespace kiv::kivifc::site
