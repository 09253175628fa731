#pragma once

#include "settings/views/ChangeReceiver.h"

#include <QList>

namespace varnel::test {

/// Writes down what setting views report, in order.
class ReportRecorder : public ChangeReceiver {
public:
    enum Kind { Backup, Change, Enable };
    struct Report {
        Kind kind = Enable;
        int settingId = 0;
        int value = 0;
        QString extra = QStringLiteral("");

        bool operator==(const Report &) const = default;
    };

    void addDataToChangeDataList(int settingId, int value, const QString &extra) override
    {
        reports.append(Report {Change, settingId, value, extra});
    }
    void addDataToBackupDataList(int settingId, int value, const QString &extra) override
    {
        reports.append(Report {Backup, settingId, value, extra});
    }
    void enableSaveButton() override { reports.append(Report {Enable}); }

    [[nodiscard]] std::optional<SettingValue> pendingValue(int) const override { return {}; }

    /// All that was reported since the last call.
    QList<Report> take() { return std::exchange(reports, {}); }

    QList<Report> reports;
};

/// The reports of one edit: the old value, the new one, then the buttons.
inline QList<ReportRecorder::Report> editReports(int settingId, int from, int to)
{
    return {{ReportRecorder::Backup, settingId, from},
            {ReportRecorder::Change, settingId, to},
            {ReportRecorder::Enable}};
}
inline QList<ReportRecorder::Report> editReports(int settingId, const QString &from,
                                                 const QString &to)
{
    return {{ReportRecorder::Backup, settingId, 0, from},
            {ReportRecorder::Change, settingId, 0, to},
            {ReportRecorder::Enable}};
}

inline void PrintTo(const ReportRecorder::Report &report, std::ostream *out)
{
    static const char *const kinds[] = {"backup", "change", "enable"};
    *out << kinds[report.kind] << ' ' << report.settingId << ' ' << report.value << " \""
         << report.extra.toStdString() << '"';
}

} // namespace varnel::test
