#include "sysinfo/views/BSDProcessesModule.h"

#include "sysinfo/views/BSDProcessesView.h"

#include <memory>

namespace varnel {

BSDProcessesModule::BSDProcessesModule(const PageContext &context) : context(context) { }

BSDProcessesModule::~BSDProcessesModule()
{
    const std::unique_ptr<BSDProcessesView> last(view.data());
}

BSDProcessesView *BSDProcessesModule::getBSDProcessesView()
{
    if (view.isNull())
        view = new BSDProcessesView(context);
    view->refreshData();
    return view;
}

} // namespace varnel
