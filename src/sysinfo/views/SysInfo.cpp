#include "sysinfo/views/SysInfo.h"

#include "sysinfo/views/SysInfoView.h"

#include <memory>

namespace varnel {

SysInfo::SysInfo(const PageContext &context) : context(context) { }

SysInfo::~SysInfo()
{
    const std::unique_ptr<SysInfoView> last(view.data());
}

SysInfoView *SysInfo::getCustomView()
{
    if (view.isNull())
        view = new SysInfoView(context);
    return view;
}

} // namespace varnel
