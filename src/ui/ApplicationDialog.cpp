#include "ui/ApplicationDialog.h"

#include <QAbstractItemView>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>

namespace varnel {

namespace {

bool isBundle(const QString &path)
{
    const QFileInfo info(path);
    return info.isDir() && info.fileName().endsWith(u".app", Qt::CaseInsensitive);
}

QString pathAt(const QModelIndex &index)
{
    return index.siblingAtColumn(0).data(QFileSystemModel::FilePathRole).toString();
}

} // namespace

ApplicationDialog::ApplicationDialog(QWidget *parent, const QString &startFolder)
    : QFileDialog(parent, tr("Choose an Application"), startFolder)
{
    // A desktop's own dialog would enter the bundle.
    setOption(QFileDialog::DontUseNativeDialog);
    setFileMode(QFileDialog::ExistingFile);
    connect(this, &QFileDialog::currentChanged, this, [this](const QString &current) {
        // By itself the dialog offers only files to its button.
        auto *name = findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        if (name != nullptr && isBundle(current))
            name->setText(QFileInfo(current).fileName());
    });
    for (auto *view : findChildren<QAbstractItemView *>()) {
        view->installEventFilter(this);
        view->viewport()->installEventFilter(this);
    }
}

void ApplicationDialog::accept()
{
    const QStringList selected = selectedFiles();
    if (selected.size() == 1 && isBundle(selected.first())) {
        choose(selected.first());
        return;
    }
    QFileDialog::accept();
    if (result() == QDialog::Accepted && !selected.isEmpty())
        path = selected.first();
}

void ApplicationDialog::choose(const QString &application)
{
    path = application;
    done(QDialog::Accepted);
}

bool ApplicationDialog::opensBundle(QObject *watched, QEvent *event)
{
    auto *view = qobject_cast<QAbstractItemView *>(watched);
    if (view == nullptr)
        view = qobject_cast<QAbstractItemView *>(watched->parent());
    QModelIndex index;
    if (view != nullptr && event->type() == QEvent::MouseButtonDblClick)
        index = view->indexAt(static_cast<QMouseEvent *>(event)->position().toPoint());
    else if (view != nullptr && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter)
            index = view->currentIndex();
    }
    if (!index.isValid() || !isBundle(pathAt(index)))
        return false;
    choose(pathAt(index));
    return true;
}

bool ApplicationDialog::eventFilter(QObject *watched, QEvent *event)
{
    return opensBundle(watched, event) || QFileDialog::eventFilter(watched, event);
}

} // namespace varnel
