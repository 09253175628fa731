#include "ui/AlertSheet.h"

#include "ui/SmallFont.h"
#include "ui/Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace varnel {

namespace {

constexpr int textWidth = 360;
constexpr int signWidth = 48;

/// The warning's triangle, sharp at any scale.
class WarningSign : public QWidget {
public:
    WarningSign() { setFixedSize(signWidth, signWidth); }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QColor amber(0xE8, 0xA3, 0x1C);
        painter.setPen(QPen(amber, 6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(amber);
        painter.drawPolygon(QPolygonF({{24, 8}, {42, 38}, {6, 38}}));
        const QColor ink(0x10, 0x24, 0x3C);
        painter.setPen(QPen(ink, 4, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(24, 17), QPointF(24, 27));
        painter.drawPoint(QPointF(24, 35));
    }
};

QLabel *makeLabel(const QString &text, const QString &objectName)
{
    auto *label = new QLabel;
    label->setObjectName(objectName);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    label->setWordWrap(true);
    label->setFixedWidth(textWidth);
    return label;
}

} // namespace

AlertSheet::AlertSheet(QWidget *parent, const Alert &alert, std::function<void(int code)> ended)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("alert"));
    setWindowTitle(alert.message);
    auto *content = new QHBoxLayout;
    content->setSpacing(16);
    content->addWidget(new WarningSign, 0, Qt::AlignTop);
    content->addLayout(makeTexts(alert));
    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(24, 24, 24, 16);
    all->setSpacing(24);
    all->addLayout(content);
    all->addLayout(makeButtons(alert));
    all->setSizeConstraint(QLayout::SetFixedSize);

    connect(this, &QDialog::finished, this, [this, ended = std::move(ended)](int code) {
        deleteLater();
        if (ended)
            ended(code);
    });
}

QLayout *AlertSheet::makeTexts(const Alert &alert)
{
    auto *texts = new QVBoxLayout;
    texts->setSpacing(8);
    QLabel *message = makeLabel(alert.message, QStringLiteral("alertMessage"));
    QFont prominent = scaledFont(font(), 1.15);
    prominent.setWeight(QFont::Medium);
    message->setFont(prominent);
    texts->addWidget(message);
    if (!alert.informative.isEmpty())
        texts->addWidget(makeLabel(alert.informative, QStringLiteral("alertInformative")));
    texts->addStretch();
    return texts;
}

QLayout *AlertSheet::makeButtons(const Alert &alert)
{
    auto *row = new QHBoxLayout;
    row->setSpacing(8);
    row->addStretch();
    for (qsizetype i = 0; i < alert.buttons.size(); ++i) {
        auto *button = new QPushButton(alert.buttons[i], this);
        button->setObjectName(QStringLiteral("alertButton%1").arg(FirstButton + int(i)));
        button->setAutoDefault(i == 0);
        button->setDefault(i == 0);
        connect(button, &QPushButton::clicked, this, [this, i] { done(FirstButton + int(i)); });
        row->insertWidget(1, button);
        if (i == 0 && alert.deletes)
            Theme::makeDangerButton(button);
        if (i == 0)
            button->setFocus();
    }
    return row;
}

void AlertSheet::reject()
{
    done(SecondButton);
}

} // namespace varnel
