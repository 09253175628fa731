// A window of Qt Widgets with nothing in it, as large as ours.

#include <QApplication>
#include <QWidget>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QWidget window;
    window.resize(960, 660);
    window.show();
    return QApplication::exec();
}
