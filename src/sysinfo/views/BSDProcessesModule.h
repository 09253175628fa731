#pragma once

#include "ui/PageContext.h"

#include <QPointer>

namespace varnel {

class BSDProcessesView;

/// Owner of the process-list page.
class BSDProcessesModule {
public:
    explicit BSDProcessesModule(const PageContext &context);
    ~BSDProcessesModule();
    BSDProcessesModule(const BSDProcessesModule &) = delete;
    BSDProcessesModule &operator=(const BSDProcessesModule &) = delete;

    /// The page, its list read afresh.
    [[nodiscard]] BSDProcessesView *getBSDProcessesView();

private:
    PageContext context;
    QPointer<BSDProcessesView> view;
};

} // namespace varnel
