// A program of QtCore that does nothing: what its libraries alone cost.

#include <QCoreApplication>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    return 0;
}
