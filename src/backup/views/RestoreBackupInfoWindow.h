#pragma once

#include "ui/ListSheet.h"
#include "ui/PageContext.h"

namespace varnel {

/// What the backup file chosen on the restore page would undo, row by row.
class RestoreBackupInfoWindow : public ListSheet {
    Q_OBJECT

public:
    RestoreBackupInfoWindow(const PageContext &context, QWidget *parent);

    /// Names the file of the shared state above the list, if it is there, and lists its rows.
    void updateLabel();
    /// Empty when the file can't be read.
    void readBackupFile(const QString &path);

    /// Kept for callers; the sheet itself goes by the shared state.
    [[nodiscard]] QString backupFilename() const { return filename; }
    void setBackupFilename(const QString &name) { filename = name; }

private:
    PageContext context;
    QString filename;
};

} // namespace varnel
