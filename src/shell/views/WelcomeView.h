#pragma once

#include "ui/PageContext.h"

#include <QWidget>

#include <memory>

namespace Ui {
class WelcomeView;
}

namespace varnel {

/// The first page: what the program does, and ten ways in.
class WelcomeView : public QWidget {
    Q_OBJECT

public:
    explicit WelcomeView(const PageContext &context);
    ~WelcomeView() override;

    void openBrackwellWebsite();

signals:
    /// A link was chosen, 1 to 10.
    void commandChosen(int number);
    /// The link to another home.
    void openHomeChosen();

private:
    void awakeFromNib();
    void addLinks();
    void tellOfMissingPreferences();

    PageContext context;
    std::unique_ptr<Ui::WelcomeView> ui;
};

} // namespace varnel
