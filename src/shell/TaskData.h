#pragma once

#include <QString>
#include <QStringList>

namespace varnel {

/// A program to run and its arguments.
class TaskData {
public:
    /// Absolute path of the program; null until set.
    [[nodiscard]] QString launchPath() const { return path; }
    void setLaunchPath(const QString &launchPath) { path = launchPath; }

    /// Handed over as they are, the program's name not among them.
    [[nodiscard]] QStringList arguments() const { return list; }
    void setArguments(const QStringList &arguments) { list = arguments; }

private:
    QString path;
    QStringList list;
};

} // namespace varnel
