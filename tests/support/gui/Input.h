#pragma once

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QTest>

namespace varnel::test {

/// Opens a choice list and takes one of its items, as a user does.
inline void choose(QComboBox &box, int index)
{
    box.showPopup();
    box.view()->setCurrentIndex(box.model()->index(index, 0));
    QTest::keyClick(box.view(), Qt::Key_Return);
}

inline void click(QAbstractButton &button)
{
    // The middle of a wide check box lies beside its text.
    const int x = button.inherits("QCheckBox") ? 8 : button.width() / 2;
    QTest::mouseClick(&button, Qt::LeftButton, {}, {x, button.height() / 2});
}

} // namespace varnel::test
