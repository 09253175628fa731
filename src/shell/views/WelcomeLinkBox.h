#pragma once

#include <QWidget>

class QVBoxLayout;

namespace varnel {

class WelcomeLink;

/// Links one under another in a rounded frame, with a line between them.
class WelcomeLinkBox : public QWidget {
    Q_OBJECT

public:
    explicit WelcomeLinkBox(QWidget *parent = nullptr);

    /// The box owns the link.
    void addLink(WelcomeLink *link);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QVBoxLayout *rows;
};

} // namespace varnel
