#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    // Also when ctest only asks for the list of tests, which it does without their environment.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
