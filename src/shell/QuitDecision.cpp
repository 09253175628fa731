#include "shell/QuitDecision.h"

#include "base/Text.h"

#include <algorithm>
#include <array>

namespace varnel {

namespace {

struct Application {
    RestartFlag flag;
    const char16_t *name;
    const char16_t *icon;
    const char16_t *process;
};

// In the sheet's order. The player's row is named after the program's version, its process is not.
constexpr std::array<Application, 7> applications {{
    {RestartFlag::Dock, u"Dock", u"Dock", u"Dock"},
    {RestartFlag::Finder, u"Finder", u"Finder", u"Finder"},
    {RestartFlag::Mail, u"Mail", u"mail", u"Mail"},
    {RestartFlag::Safari, u"Safari", u"compass", u"Safari"},
    {RestartFlag::ITunes, u"iTunes", u"iTunes", u"iTunes"},
    {RestartFlag::QuickTimePlayer, u"QuickTime Player X", u"QuickTimePlayerX", u"QuickTime Player"},
    {RestartFlag::TimeMachine, u"Time Machine", u"backup", u"Time Machine"},
}};

QString moduleText(qsizetype settingChanges, qsizetype loginItemChanges)
{
    if (settingChanges > 0 && loginItemChanges > 0)
        return fillIn(u"%@ and %@", {QStringLiteral("Quillet"), QStringLiteral("Login Items")});
    return settingChanges > 0 ? QStringLiteral("Quillet") : QStringLiteral("Login Item");
}

} // namespace

QString savePromptText(qsizetype settingChanges, qsizetype loginItemChanges)
{
    return fillIn(u"Do you want to save the changes you made in the %@ module",
                  {moduleText(settingChanges, loginItemChanges)});
}

QList<CloseRow> closeRows(RestartFlags flags)
{
    QList<CloseRow> rows;
    for (const Application &application : applications) {
        if (flags.testFlag(application.flag))
            rows.append(
                {QString::fromUtf16(application.name), QString::fromUtf16(application.icon), true});
    }
    return rows;
}

QString processOfRow(const QString &rowName)
{
    const auto hit =
        std::find_if(applications.begin(), applications.end(),
                     [&](const Application &a) { return QStringView(a.name) == rowName; });
    return hit == applications.end() ? QString() : QString::fromUtf16(hit->process);
}

QStringList processesToEnd(const QList<CloseRow> &rows)
{
    QStringList processes;
    for (const CloseRow &row : rows) {
        const QString process = processOfRow(row.name);
        if (row.close && !process.isNull())
            processes.append(process);
    }
    return processes;
}

QString systemInterfaceProcess()
{
    return QStringLiteral("SystemUIServer");
}

} // namespace varnel
