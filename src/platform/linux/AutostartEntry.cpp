#include "platform/linux/AutostartEntry.h"

#include "base/Literals.h"

#include <QFileInfo>

#include <climits>
#include <memory>

#include <glib.h>

namespace varnel {

namespace {

constexpr const char *group = G_KEY_FILE_DESKTOP_GROUP;
constexpr const char *ownPathKey = "X-Varnel-Path";
constexpr const char *switchSuffix = "-Autostart-enabled";
/// A path has no more than PATH_MAX bytes, and quoting makes four of one at most. What is longer
/// has arguments, and to tell its hundred thousand words apart would be work for nothing.
constexpr qsizetype longestLoneProgram = qsizetype(4) * PATH_MAX;

struct FreeKeyFile {
    void operator()(GKeyFile *file) const { g_key_file_free(file); }
};
struct FreeText {
    void operator()(char *text) const { g_free(text); }
};
struct FreeTexts {
    void operator()(char **texts) const { g_strfreev(texts); }
};
using KeyFile = std::unique_ptr<GKeyFile, FreeKeyFile>;
using Text = std::unique_ptr<char, FreeText>;
using Texts = std::unique_ptr<char *, FreeTexts>;

/// What is written again has to hold its comments and all its translations.
constexpr auto everything =
    static_cast<GKeyFileFlags>(G_KEY_FILE_KEEP_COMMENTS | G_KEY_FILE_KEEP_TRANSLATIONS);

KeyFile load(const QByteArray &bytes, GKeyFileFlags flags)
{
    KeyFile file(g_key_file_new());
    if (g_key_file_load_from_data(file.get(), bytes.constData(), static_cast<gsize>(bytes.size()),
                                  flags, nullptr)
        == FALSE)
        file.reset();
    return file;
}

QByteArray save(GKeyFile *file)
{
    gsize length = 0;
    const Text text(g_key_file_to_data(file, &length, nullptr));
    return {text.get(), static_cast<qsizetype>(length)};
}

QString toText(const Text &text)
{
    return text ? QString::fromUtf8(text.get()) : QString();
}

QString string(GKeyFile *file, const char *key)
{
    return toText(Text(g_key_file_get_string(file, group, key, nullptr)));
}

QString translated(GKeyFile *file, const char *key)
{
    return toText(Text(g_key_file_get_locale_string(file, group, key, nullptr, nullptr)));
}

QStringList strings(GKeyFile *file, const char *key)
{
    const Texts texts(g_key_file_get_string_list(file, group, key, nullptr, nullptr));
    QStringList list;
    for (char **text = texts.get(); text != nullptr && *text != nullptr; ++text)
        list.append(QString::fromUtf8(*text));
    return list;
}

/// X-GNOME-Autostart-enabled and its kin of other desktops.
bool isSwitch(const char *key)
{
    return g_str_has_prefix(key, "X-") != FALSE && g_str_has_suffix(key, switchSuffix) != FALSE;
}

bool switchedOff(GKeyFile *file)
{
    if (g_key_file_get_boolean(file, group, G_KEY_FILE_DESKTOP_KEY_HIDDEN, nullptr) != FALSE)
        return true;
    const Texts keys(g_key_file_get_keys(file, group, nullptr, nullptr));
    for (char **key = keys.get(); key != nullptr && *key != nullptr; ++key) {
        if (isSwitch(*key) && string(file, *key).trimmed() == u"false")
            return true;
    }
    return false;
}

QStringList commandWords(const QString &command)
{
    char **raw = nullptr;
    if (command.size() > longestLoneProgram)
        return {};
    if (g_shell_parse_argv(command.toUtf8().constData(), nullptr, &raw, nullptr) == FALSE)
        return {};
    const Texts words(raw);
    QStringList list;
    for (char **word = words.get(); *word != nullptr; ++word) {
        QString text = QString::fromUtf8(*word);
        const bool isFieldCode = text.size() == 2 && text[0] == u'%' && text[1] != u'%';
        if (!isFieldCode)
            list.append(text.replace(u"%%"_s, u"%"_s));
    }
    return list;
}

/// A path as one word of an Exec line: reserved characters escaped inside double quotes, "%"
/// doubled.
QByteArray execWord(const QString &path)
{
    QByteArray word = "\"";
    for (const char byte : path.toUtf8()) {
        if (byte == '"' || byte == '`' || byte == '$' || byte == '\\')
            word += '\\';
        else if (byte == '%')
            word += '%';
        word += byte;
    }
    return word + '"';
}

} // namespace

std::optional<AutostartEntry> parseAutostartEntry(const QByteArray &bytes)
{
    const KeyFile file = load(bytes, G_KEY_FILE_NONE);
    if (!file || g_key_file_has_group(file.get(), group) == FALSE)
        return std::nullopt;
    AutostartEntry entry;
    entry.off = switchedOff(file.get());
    if (!entry.off && string(file.get(), G_KEY_FILE_DESKTOP_KEY_TYPE) != u"Application")
        return std::nullopt;
    entry.name = translated(file.get(), G_KEY_FILE_DESKTOP_KEY_NAME);
    entry.icon = translated(file.get(), G_KEY_FILE_DESKTOP_KEY_ICON);
    entry.ownPath = string(file.get(), ownPathKey);
    entry.exec = commandWords(string(file.get(), G_KEY_FILE_DESKTOP_KEY_EXEC));
    entry.onlyShowIn = strings(file.get(), G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN);
    entry.notShowIn = strings(file.get(), G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN);
    entry.tryExec = string(file.get(), G_KEY_FILE_DESKTOP_KEY_TRY_EXEC);
    return entry;
}

QByteArray newAutostartEntry(const QString &applicationPath)
{
    const KeyFile file(g_key_file_new());
    const auto set = [&](const char *key, const QByteArray &value) {
        g_key_file_set_string(file.get(), group, key, value.constData());
    };
    QString name = QFileInfo(applicationPath).fileName();
    if (name.endsWith(u".app"))
        name.chop(4);
    set(G_KEY_FILE_DESKTOP_KEY_TYPE, "Application");
    set(G_KEY_FILE_DESKTOP_KEY_NAME, name.toUtf8());
    set(G_KEY_FILE_DESKTOP_KEY_EXEC, execWord(applicationPath));
    set(ownPathKey, applicationPath.toUtf8());
    return save(file.get());
}

QByteArray hidingAutostartEntry()
{
    return "[Desktop Entry]\nHidden=true\n";
}

QByteArray withOwnPath(const QByteArray &bytes, const QString &applicationPath)
{
    const KeyFile file = load(bytes, everything);
    if (!file)
        return bytes;
    g_key_file_set_string(file.get(), group, ownPathKey, applicationPath.toUtf8().constData());
    return save(file.get());
}

} // namespace varnel
