#include "profiles/DefaultsScript.h"

#include "base/Literals.h"
#include "base/ShellText.h"
#include "profiles/Domain.h"
#include "settings/SettingWrite.h"
#include "shell/QuitDecision.h"

namespace varnel {

namespace {

const QString orFailed = QStringLiteral(" || failed=1\n");
/// What is not there can't be removed, and what does not run can't be ended: no failure.
const QString orNothing = QStringLiteral(" 2>/dev/null || :\n");

/// The type and the value as words of the tool.
struct Words {
    QString operator()(bool value) const { return value ? u"-bool true"_s : u"-bool false"_s; }
    QString operator()(qint64 value) const { return u"-int "_s + QString::number(value); }
    QString operator()(const QString &value) const { return u"-string "_s + shellWord(value); }
    QString operator()(const QStringList &values) const
    {
        // Elements without a type of their own would be read as the text of a property list.
        QString words = u"-array"_s;
        for (const QString &value : values)
            words += u' ' + (*this)(value);
        return words;
    }
};

/// Whether the tool's words can hold the value; a word holds no NUL and only Unicode.
bool isWord(const plist::NewValue &value)
{
    const auto *text = std::get_if<QString>(&value);
    return !text || (!text->contains(QChar(u'\0')) && text->isValidUtf16());
}

class Script {
public:
    void add(const SettingChange &setting);
    [[nodiscard]] Translation finish();

private:
    void change(const SettingChange &setting, const SettingWrite &write, const KeyChange &change);
    void leaveOut(const SettingRow &row, const QString &why);

    QString commands;
    QStringList leftOut;
    RestartFlags flags;
};

/// "defaults VERB DOMAIN KEY", the domain as that tool names it.
QString command(const QString &verb, const SettingRow &row, const QString &key = {})
{
    const QString domain = domainOf(row);
    QString words = u"defaults "_s + verb + u' '
        + shellWord(domain == globalDomain ? u"NSGlobalDomain"_s : domain);
    if (!key.isNull())
        words += u' ' + shellWord(key);
    return words;
}

void Script::leaveOut(const SettingRow &row, const QString &why)
{
    leftOut.append(row.name + u": " + why);
    commands += u"# "_s + leftOut.last() + u'\n';
}

void Script::change(const SettingChange &setting, const SettingWrite &write,
                    const KeyChange &change)
{
    const SettingRow &row = *setting.row;
    const QString &key = change.keyPath.first();
    const bool nested = change.keyPath.size() > 1;
    if (!change.value && nested)
        return leaveOut(row, u"'defaults' takes no key out of a dictionary"_s);
    if (!change.value) {
        commands += command(u"delete"_s, row, key) + orNothing;
        return;
    }
    if (!isWord(*change.value))
        return leaveOut(row, u"its text can't stand in a command"_s);
    const QString words = std::visit(Words {}, *change.value);
    QString line = command(u"write"_s, row, key);
    line += nested ? QString(u" -dict-add "_s + shellWord(change.keyPath.last()) + u' ' + words)
                   : QString(u' ' + words);
    // Where the file, or the dictionary in it, is not there, there is nothing to change.
    if (write.ifMissing == PreferenceFiles::IfMissing::LeaveMissing)
        line = u"! "_s + command(u"read"_s, row, nested ? key : QString()) + u" >/dev/null 2>&1 || "
            + line;
    commands += line + orFailed;
}

void Script::add(const SettingChange &setting)
{
    const SettingWrite write = SettingWrite::of(*setting.row, setting.newValue);
    if (write.hidesLibrary)
        commands += (*write.hidesLibrary ? u"chflags hidden \"$HOME/Library\""_s
                                         : u"chflags nohidden \"$HOME/Library\""_s)
            + orFailed;
    for (const KeyChange &each : write.changes)
        change(setting, write, each);
    if (write.restarts)
        flags |= *write.restarts;
}

Translation Script::finish()
{
    QString text =
        u"#!/bin/sh\n# Hidden settings, for the account that runs this.\nfailed=0\n"_s + commands;
    QStringList processes = processesToEnd(closeRows(flags));
    if (!processes.isEmpty())
        processes.append(systemInterfaceProcess());
    for (const QString &process : processes)
        text += u"killall "_s + shellWord(process) + orNothing;
    return {QString(text + u"exit \"$failed\"\n").toUtf8(), leftOut};
}

} // namespace

Translation defaultsScript(const Profile &profile)
{
    Script script;
    for (const SettingChange &setting : inSavingOrder(profile.settings))
        script.add(setting);
    return script.finish();
}

} // namespace varnel
