#include "settings/views/FolderView.h"

#include "ui/Dialogs.h"
#include "ui/Theme.h"

#include <QDir>
#include <QHBoxLayout>
#include <QPushButton>

namespace varnel {

void FolderView::getNewLocation()
{
    const bool isPath = QDir::isAbsolutePath(shownText());
    const QString start = isPath ? shownText() : viewContext().access.home().path;
    const std::optional<QString> chosen = viewContext().dialogs.chooseFolder(this, start);
    if (!chosen)
        return;
    showText(*chosen);
    updateWindowForControlTextChange();
}

void FolderView::setDefaultCheckBoxStat()
{
    TextView::setDefaultCheckBoxStat();
    if (chooseButton)
        chooseButton->setEnabled(fieldEnabled());
}

void FolderView::buildFieldLine(QHBoxLayout *line)
{
    TextView::buildFieldLine(line);
    chooseButton = new QPushButton(QStringLiteral("Choose…"), this);
    chooseButton->setObjectName(QStringLiteral("chooseButton"));
    chooseButton->setAccessibleName(QStringLiteral("Choose a folder: ") + setting().label);
    chooseButton->setEnabled(fieldEnabled());
    line->addSpacing(Theme::gapSmall);
    line->addWidget(chooseButton);
    connect(chooseButton, &QPushButton::clicked, this, &FolderView::getNewLocation);
}

} // namespace varnel
