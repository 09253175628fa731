#include "shell/views/WelcomeView.h"

#include "home/Workspace.h"
#include "platform/Desktop.h"
#include "platform/FileStore.h"
#include "settings/Catalogue.h"
#include "shell/views/WelcomeLink.h"
#include "shell/views/WelcomeLinkBox.h"
#include "ui/Icons.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QClipboard>

#include <algorithm>
#include <array>

#include "ui_WelcomeView.h"

namespace varnel {

namespace {

const QString websiteAddress = QStringLiteral("https://varnel.example/");

struct Link {
    ModuleId group;
    const char16_t *title;
    const char16_t *line; ///< after the group's name
};

// In the order of the commands. Each leads to a whole group and names something of it.
constexpr std::array<Link, 10> links {{
    {ModuleId::TimeMachine, u"New disks for backup", u"whether each new disk is offered"},
    {ModuleId::General, u"Scroll bars and key repeat", u"also spelling and the Library folder"},
    {ModuleId::Mail, u"Animations in Mail", u"when replying and when sending"},
    {ModuleId::Mail, u"Messages as plain text", u"how messages are shown"},
    {ModuleId::Mail, u"Addresses and attachments", u"how they are copied and shown"},
    {ModuleId::QuickTimePlayer, u"Play movies at once", u"start when a file opens"},
    {ModuleId::QuickTimePlayer, u"Controls and title bar", u"keep them hidden or in view"},
    {ModuleId::QuickTimePlayer, u"Captions and subtitles", u"on when a movie opens"},
    {ModuleId::Finder, u"Hidden files and folders", u"see what is usually out of sight"},
    {ModuleId::Finder, u"Quit menu and full paths", u"also sounds and animations"},
}};

constexpr int linksInColumn = 5;

/// Whether a Mac, or this program, has ever stored anything there.
bool hasMacPreferences(const Workspace &workspace)
{
    const Result<QStringList> names =
        workspace.files().names(workspace.home().preferencesDirectory());
    return names
        && std::any_of(names.value().begin(), names.value().end(),
                       [](const QString &name) { return name.endsWith(u".plist"); });
}

} // namespace

WelcomeView::WelcomeView(const PageContext &context)
    : context(context), ui(std::make_unique<Ui::WelcomeView>())
{
    ui->setupUi(this);
    awakeFromNib();
    addLinks();
    if (!hasMacPreferences(context.workspace))
        tellOfMissingPreferences();
    if (context.host != nullptr && !context.host->desktop.isReachable())
        ui->websiteButton->setToolTip(tr("Copies %1").arg(websiteAddress));
    connect(ui->websiteButton, &QAbstractButton::clicked, this, &WelcomeView::openBrackwellWebsite);
}

WelcomeView::~WelcomeView() = default;

void WelcomeView::awakeFromNib()
{
    Theme::setTextRole(ui->titleLabel, Theme::TextRole::PageTitle);
    Theme::setTextRole(ui->linksTitle, Theme::TextRole::RowTitle);
    Theme::setTextRole(ui->safetyLabel, Theme::TextRole::Help);
    Theme::setTextRole(ui->websiteButton, Theme::TextRole::Help);
    ui->titleLabel->adjustSize();
    // The window's own ground shows through.
    ui->scrollArea->viewport()->setAutoFillBackground(false);
    ui->contents->setAutoFillBackground(false);
}

/// Most such homes are of a person who has come to work on another one.
void WelcomeView::tellOfMissingPreferences()
{
    ui->introLabel->setText(
        tr("No Mac has stored preferences in this home. To change those of a Mac account, open its "
           "home folder, on a mounted disk say."));
    Theme::setTextRole(ui->openHomeButton, Theme::TextRole::Help);
    ui->openHomeButton->setVisible(!context.workspace.home().asOwner());
    connect(ui->openHomeButton, &QAbstractButton::clicked, this, &WelcomeView::openHomeChosen);
}

void WelcomeView::addLinks()
{
    for (int number = 1; number <= int(links.size()); ++number) {
        const Link &row = links.at(static_cast<std::size_t>(number - 1));
        const ModuleRow &group = moduleRow(row.group);
        auto *link = new WelcomeLink(Icons::icon(group.icon), QString::fromUtf16(row.title),
                                     group.outlineTitle + u": " + QString::fromUtf16(row.line));
        link->setObjectName(u"openCommand" + QString::number(number));
        connect(link, &QAbstractButton::clicked, this,
                [this, number] { emit commandChosen(number); });
        (number <= linksInColumn ? ui->leftLinks : ui->rightLinks)->addLink(link);
    }
    // Below the links on the page, and after them for the Tab key. The order is a circle, in which
    // the button comes after the last link already: only the detour makes it the last of the page.
    setTabOrder(findChild<WelcomeLink *>(QStringLiteral("openCommand1")), ui->websiteButton);
    setTabOrder(findChild<WelcomeLink *>(QStringLiteral("openCommand10")), ui->websiteButton);
}

void WelcomeView::openBrackwellWebsite()
{
    if (context.host == nullptr)
        return;
    if (context.host->desktop.isReachable())
        context.host->desktop.openUrl(websiteAddress);
    else
        QApplication::clipboard()->setText(websiteAddress);
}

} // namespace varnel
