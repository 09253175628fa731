#include "sysinfo/views/ProcessCell.h"

#include "base/Logging.h"
#include "base/Text.h"
#include "sysinfo/views/ProcessModel.h"

namespace varnel {

void ProcessCell::paint(QPainter *painter, const QStyleOptionViewItem &option,
                        const QModelIndex &index) const
{
    varnelLog(lcSysInfo, QStringLiteral("willDisplayCell"));
    varnelLog(lcSysInfo, fillIn(u"%@", {index.data(ProcessModel::IconPathRole).toString()}));
    ImageAndTextCell::paint(painter, option, index);
}

} // namespace varnel
