#pragma once

#include "shell/SharedObject.h"
#include "shell/views/MainWindow.h"
#include "ui/PageContext.h"

#include <QList>

#include <functional>

namespace varnel {

class Varnel;

/// Gives a page's view; null when there is none.
using PageGetter = std::function<QWidget *()>;

/// One page of the main window.
struct PageRow {
    PageId page = PageId::Welcome;
    QString interfaceName; ///< "WelcomeView"
    QString loadFailure; ///< logged when that does not load
    PageId frameFrom = page; ///< the page whose container tells the view's size
    /// Makes the controller and puts it into the shared object; none while there is no such page.
    std::function<PageGetter(const PageContext &, Varnel &)> make;
    /// Called whenever the page's tab is entered by its name "Restore Backup".
    std::function<void(SharedObject &)> reload;
    /// Selects a backup file of the page's list.
    std::function<void(SharedObject &, const QString &name)> select {};
};

/// The pages in the order in which they are built.
[[nodiscard]] QList<PageRow> pageTable();

/// The maker of a page whose controller is made from the context alone:
/// makePage<Quillet, &SharedObject::setQuillet, &Quillet::getQuilletView>.
template <typename Page, void (SharedObject::*store)(std::shared_ptr<Page>), auto getter>
PageGetter makePage(const PageContext &context, Varnel &)
{
    const auto page = std::make_shared<Page>(context);
    (context.shared.*store)(page);
    return [held = std::weak_ptr<Page>(page)]() -> QWidget * {
        const auto alive = held.lock();
        return alive ? (alive.get()->*getter)() : nullptr;
    };
}

} // namespace varnel
