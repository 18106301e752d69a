#include "kivifc/Site/SitePages.h"

#include "kivifc/Site/Assets.h"
#include "kivifc/Site/EntityPage.h"
#include "kivifc/Site/SearchIndexFile.h"
#include "kivifc/Site/StartPage.h"
#include "kivifc/Site/TextPage.h"
#include "kivifc/Site/TypePage.h"

#include <array>

namespace kiv::kivifc::site {

namespace {

using Write = void (*)(const SiteModel& model, SiteFolder& folder);

constexpr std::array Kinds{Write{vStartPageWrite},     Write{vEntityPagesWrite}, Write{vTypePagesWrite},
                           Write{vFunctionPagesWrite}, Write{vRulePagesWrite},   Write{vSearchIndexWrite}};

} // namespace

void vSitePagesWrite(const SiteModel& model, SiteFolder& folder) {
    for (const auto write : Kinds)
        write(model, folder);
    for (const auto& asset : getAssets())
        folder.vWrite(asset);
}

} // namespace kiv::kivifc::site
