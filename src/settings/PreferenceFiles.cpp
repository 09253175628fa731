#include "settings/PreferenceFiles.h"

#include "base/Literals.h"
#include "base/Logging.h"
#include "base/Text.h"
#include "platform/FileStore.h"

#include <QLocale>

#include <algorithm>
#include <limits>

namespace varnel {

namespace {

int truncated(double real)
{
    constexpr double least = std::numeric_limits<int>::min();
    constexpr double most = std::numeric_limits<int>::max();
    // A comparison with NaN is false; it has no number to give.
    return real == real ? int(std::clamp(real, least, most)) : 0;
}

bool isPlainWord(const QString &text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar character) {
        return character.unicode() < 128 && character.isLetterOrNumber();
    });
}

QString quoted(QString text)
{
    if (isPlainWord(text))
        return text;
    text.replace(u'\\', u"\\\\"_s).replace(u'"', u"\\\""_s).replace(u'\n', u"\\n"_s);
    return u'"' + text + u'"';
}

QString arrayText(const QStringList &elements)
{
    QStringList lines;
    for (const QString &element : elements)
        lines.append(u"    " + quoted(element));
    return lines.isEmpty() ? u"(\n)"_s : QString(u"(\n" + lines.join(u",\n") + u"\n)");
}

QString noTextForm()
{
    return u"(no text form)"_s;
}

/// "<48656c6c 6f>"
QString dataText(const QByteArray &data)
{
    constexpr qsizetype most = qsizetype(64) << 10; // a backup file with a huge text is not read
    constexpr qsizetype group = 4;
    if (data.size() > most)
        return noTextForm();
    QString text(u'<');
    for (qsizetype at = 0; at < data.size(); at += group) {
        if (at > 0)
            text += u' ';
        text += QLatin1String(data.sliced(at, std::min(group, data.size() - at)).toHex());
    }
    return text + u'>';
}

} // namespace

std::optional<int> intValue(const plist::Value &value)
{
    switch (value.kind) {
    case plist::Kind::Boolean:
        return value.boolean ? 1 : 0;
    case plist::Kind::Integer:
        return static_cast<int>(value.integer);
    case plist::Kind::Real:
        return truncated(value.real);
    case plist::Kind::String:
        return leadingInt(value.string);
    case plist::Kind::Missing:
    case plist::Kind::Data:
    case plist::Kind::StringArray:
    case plist::Kind::Array:
    case plist::Kind::Dictionary:
    case plist::Kind::Other:
        break;
    }
    return std::nullopt;
}

QString textValue(const plist::Value &value)
{
    switch (value.kind) {
    case plist::Kind::Boolean:
        return QString(value.boolean ? u'1' : u'0');
    case plist::Kind::Integer:
        return QString::number(value.integer);
    case plist::Kind::Real:
        return QString::number(value.real, 'g', QLocale::FloatingPointShortest);
    case plist::Kind::String:
        return value.string.isNull() ? u""_s : value.string; // null would print as "(null)"
    case plist::Kind::Data:
        return dataText(value.data);
    case plist::Kind::StringArray:
        return arrayText(value.strings);
    case plist::Kind::Missing:
    case plist::Kind::Array:
    case plist::Kind::Dictionary:
    case plist::Kind::Other:
        break;
    }
    return noTextForm();
}

std::optional<QString> PreferenceFiles::readStringPlistValue(const QString &path,
                                                             const QString &key) const
{
    const plist::Value value = readValue(path, {key});
    if (value.kind == plist::Kind::Missing)
        return std::nullopt;
    return textValue(value);
}

std::optional<int> PreferenceFiles::readNumberPlistValue(const QString &path,
                                                         const QString &key) const
{
    return intValue(readValue(path, {key}));
}

plist::Value PreferenceFiles::readValue(const QString &path, const QStringList &keyPath) const
{
    const LoadedFile file = loaded(path);
    return file ? file->value(keyPath) : plist::Value();
}

Result<void> PreferenceFiles::writeStringPlistValue(const QString &path, const QString &key,
                                                    const QString &value)
{
    return change(path, {{{key}, value}}, IfMissing::Create);
}

Result<void> PreferenceFiles::writeNumberPlistValue(const QString &path, const QString &key,
                                                    int value)
{
    return change(path, {{{key}, qint64(value)}}, IfMissing::Create);
}

Result<void> PreferenceFiles::writeBoolPlistValue(const QString &path, const QString &key,
                                                  bool value)
{
    return change(path, {{{key}, value}}, IfMissing::Create);
}

Result<void> PreferenceFiles::deletePlistValue(const QString &path, const QString &key)
{
    return changeExisting(path, {key}, std::nullopt);
}

Result<void> PreferenceFiles::changeExisting(const QString &path, const QStringList &keyPath,
                                             const std::optional<plist::NewValue> &value)
{
    return change(path, {{keyPath, value}}, IfMissing::LeaveMissing);
}

Result<void> PreferenceFiles::change(const QString &path, const QList<KeyChange> &changes,
                                     IfMissing ifMissing)
{
    shared.erase(path);
    return store.update(
        path, [&](const std::optional<QByteArray> &old) -> Result<std::optional<QByteArray>> {
            Result<PreferenceContent> content = PreferenceContent::of(path, old);
            if (!content) {
                varnelLog(lcIo, content.error().text);
                return content.error();
            }
            if (const Result<bool> done = content.value().change(changes, ifMissing); !done)
                return done.error();
            return content.value().bytes();
        });
}

std::optional<Error> PreferenceFiles::loadFailure(const QString &path) const
{
    const auto failure = failures.find(path);
    return failure == failures.end() ? std::nullopt : std::optional(failure->second);
}

PreferenceFiles::LoadedFile PreferenceFiles::loaded(const QString &path) const
{
    if (passes == 0)
        return load(path);
    const auto known = shared.find(path);
    return known != shared.end() ? known->second : shared.emplace(path, load(path)).first->second;
}

PreferenceFiles::LoadedFile PreferenceFiles::load(const QString &path) const
{
    failures.erase(path);
    Result<QByteArray> bytes = store.read(path);
    if (!bytes) {
        if (bytes.error().code != ErrorCode::NotFound)
            failures.insert_or_assign(path, bytes.error());
        return nullptr; // the store has said why, unless there is no such file
    }
    Result<PreferenceContent> content = PreferenceContent::of(path, bytes.value());
    if (content)
        return std::make_shared<const PreferenceContent>(std::move(content).value());
    failures.insert_or_assign(path, content.error());
    if (!reported.contains(path)) {
        reported.insert(path);
        varnelLog(lcIo, content.error().text);
    }
    return nullptr;
}

PreferenceFiles::ReadPass::ReadPass(const PreferenceFiles &files) : files(files)
{
    ++files.passes;
}

PreferenceFiles::ReadPass::~ReadPass()
{
    if (--files.passes == 0)
        files.shared.clear();
}

} // namespace varnel
