#include <QCoreApplication>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    // The toolkit takes the user's locale at start; tests see what the programs see.
    QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
