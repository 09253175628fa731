// The part of the controller that shows what a search finds.

#include "base/Logging.h"
#include "base/Text.h"
#include "settings/SearchIndex.h"
#include "settings/views/Quillet.h"
#include "settings/views/QuilletView.h"

namespace varnel {

void Quillet::startSearch()
{
    if (page)
        page->startSearch();
}

void Quillet::doSearch()
{
    if (!page)
        return;
    removeSubview();
    int total = 0;
    int top = -1;
    bool shading = true;
    const QList<SearchResult> results = findViews(page->searchText());
    for (const SearchResult &result : results) {
        varnelLog(lcSettings,
                  fillIn(u"%@ %lu %d %d",
                         {result.text, QString::number(result.matchLength),
                          QString::number(result.id), QString::number(top)}));
        // Only the module that owns the setting adds a row.
        showDockModules(result.id, total, top, false, shading);
        showFinderModules(result.id, total, top, false, shading);
        showSafariModules(result.id, total, top, false, shading);
        showGeneralkModules(result.id, total, top, false, shading);
        showMailModules(result.id, total, top, false, shading);
        showScreenCaptureModules(result.id, total, top, false, shading);
        showITunesModules(result.id, total, top, false, shading);
        showTimeMachineModules(result.id, total, top, false, shading);
        showQuickTimePlayerModules(result.id, total, top, false, shading);
    }
    showLasting();
    page->showSearchOutcome(results.isEmpty(),
                            results.isEmpty() ? settingsCalled(page->searchText())
                                              : QList<const SettingRow *>());
}

} // namespace varnel
