#pragma once

#include "settings/SettingAccess.h"
#include "settings/views/GenericView.h"
#include "settings/views/ViewFactory.h"
#include "support/gui/Input.h"
#include "support/gui/ReportRecorder.h"
#include "support/gui/SettingsFixture.h"

#include <memory>

namespace varnel::test {

/// One setting view on its own, in place of the page's controller a recorder.
class SettingViewFixture : public SettingsFixture {
protected:
    /// Makes the view of that class as a module does and puts it on the screen.
    GenericView &open(const QString &viewClass)
    {
        view = makeSettingView(viewClass, {access, shared.restartFlags(), dialogs, desktop});
        view->awakeFromNib();
        view->setParentView(&reports);
        view->makeControls();
        view->show();
        return *view;
    }

    template <typename View> View &openAs(const QString &viewClass)
    {
        return dynamic_cast<View &>(open(viewClass));
    }

    template <typename Widget> [[nodiscard]] Widget &control(const QString &name) const
    {
        auto *found = view->findChild<Widget *>(name);
        if (!found)
            throw std::runtime_error("no control " + name.toStdString());
        return *found;
    }

    SettingAccess access {home.home(), files, finderInfo};
    Desktop *desktop = nullptr; ///< none at first
    ReportRecorder reports;
    std::unique_ptr<GenericView> view;
};

} // namespace varnel::test
