#pragma once

#include "ui/PageContext.h"

#include <QPointer>

namespace varnel {

class SysInfoView;

/// The system-information page's controller.
class SysInfo {
public:
    explicit SysInfo(const PageContext &context);
    ~SysInfo();
    SysInfo(const SysInfo &) = delete;
    SysInfo &operator=(const SysInfo &) = delete;

    /// The page, made by the first call.
    [[nodiscard]] SysInfoView *getCustomView();

private:
    PageContext context;
    QPointer<SysInfoView> view; ///< the window that it stands in may end first
};

} // namespace varnel
