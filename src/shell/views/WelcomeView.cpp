#include "shell/views/WelcomeView.h"

#include "platform/Desktop.h"
#include "ui/Icons.h"
#include "ui/Theme.h"

#include <QToolButton>

#include <array>

#include "ui_WelcomeView.h"

namespace varnel {

namespace {

const QString websiteAddress = QStringLiteral("https://varnel.example/");

struct Link {
    const char16_t *text;
    const char16_t *icon;
};

// In the order of the commands. Each leads to a whole group, which its first word names.
constexpr std::array<Link, 10> links {{
    {u"Time Machine: whether new disks are offered for backup", u"backup"},
    {u"General: scroll bars, key repeat, the Library folder", u"General"},
    {u"Mail: animation of replies and of sending", u"mail"},
    {u"Mail: messages as plain text", u"mail"},
    {u"Mail: addresses copied without names", u"mail"},
    {u"QuickTime Player X: play a movie as it opens", u"QuickTimePlayerX"},
    {u"QuickTime Player X: controls and title bar", u"QuickTimePlayerX"},
    {u"QuickTime Player X: captions and subtitles", u"QuickTimePlayerX"},
    {u"Finder: hidden files and folders", u"Finder"},
    {u"Finder: quit menu, full paths, animations", u"Finder"},
}};

constexpr int linksInColumn = 5;

} // namespace

WelcomeView::WelcomeView(const PageContext &context)
    : context(context), ui(std::make_unique<Ui::WelcomeView>())
{
    ui->setupUi(this);
    awakeFromNib();
    addLinks();
    connect(ui->websiteButton, &QAbstractButton::clicked, this, &WelcomeView::openBrackwellWebsite);
}

WelcomeView::~WelcomeView() = default;

void WelcomeView::awakeFromNib()
{
    Theme::setTextRole(ui->titleLabel, Theme::TextRole::PageTitle);
    Theme::setTextRole(ui->linksTitle, Theme::TextRole::RowTitle);
    Theme::setTextRole(ui->safetyLabel, Theme::TextRole::Help);
    ui->titleLabel->adjustSize();
}

void WelcomeView::addLinks()
{
    for (int i = 0; i < int(links.size()); ++i) {
        const Link &link = links.at(static_cast<std::size_t>(i));
        QToolButton *button =
            makeLink(i + 1, QString::fromUtf16(link.text), QString::fromUtf16(link.icon));
        ui->linkGrid->addWidget(button, i % linksInColumn, i / linksInColumn, Qt::AlignLeft);
    }
}

QToolButton *WelcomeView::makeLink(int number, const QString &text, const QString &icon)
{
    auto *button = new QToolButton(this);
    button->setObjectName(u"openCommand" + QString::number(number));
    button->setAutoRaise(true);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setIcon(Icons::icon(icon));
    button->setIconSize({Theme::tabIconSize, Theme::tabIconSize});
    button->setText(text);
    button->setCursor(Qt::PointingHandCursor);
    button->setFocusPolicy(Qt::StrongFocus);
    QPalette ink = button->palette();
    ink.setColor(QPalette::ButtonText, Theme::accent(ink));
    button->setPalette(ink);
    connect(button, &QToolButton::clicked, this, [this, number] { emit commandChosen(number); });
    return button;
}

void WelcomeView::openBrackwellWebsite()
{
    if (context.host != nullptr)
        context.host->desktop.openUrl(websiteAddress);
}

} // namespace varnel
