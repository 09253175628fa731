#include "Referees.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>

namespace varnel::test {

namespace {

// Reads base64 lines, each a file, and answers with one JSON array of objects.
const char *const script = R"(
import base64, json, plistlib, sys
def say(v):
    if isinstance(v, dict):
        return '{' + ','.join(f'{k!r}:{say(x)}' for k, x in v.items()) + '}'
    if isinstance(v, list):
        return '[' + ','.join(say(x) for x in v) + ']'
    return f'{type(v).__name__} {v!r}'
answer = []
for line in sys.stdin:
    try:
        root = plistlib.loads(base64.b64decode(line))
        answer.append({k: say(v) for k, v in root.items()})
    except Exception as e:
        answer.append({'error': repr(e)})
print(json.dumps(answer))
)";

} // namespace

std::optional<QList<QMap<QByteArray, QByteArray>>> readByPython(const QList<QByteArray> &files)
{
    const QString python = QStandardPaths::findExecutable(QStringLiteral("python3"));
    if (python.isEmpty())
        return {};
    QByteArray input;
    for (const QByteArray &file : files)
        input += file.toBase64() + '\n';
    QProcess process;
    process.start(python, {QStringLiteral("-c"), QString::fromLatin1(script)});
    process.write(input);
    process.closeWriteChannel();
    process.waitForFinished(-1);
    const QJsonArray answers = QJsonDocument::fromJson(process.readAllStandardOutput()).array();
    QList<QMap<QByteArray, QByteArray>> read;
    for (const QJsonValue &answer : answers) {
        QMap<QByteArray, QByteArray> entries;
        const QJsonObject object = answer.toObject();
        for (auto entry = object.begin(); entry != object.end(); ++entry)
            entries.insert(entry.key().toUtf8(), entry.value().toString().toUtf8());
        read.append(entries);
    }
    return read;
}

} // namespace varnel::test
