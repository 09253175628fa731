#include "cli/Runner.h"

int main(int argc, char **argv)
{
    return varnel::cli::run(argc, argv);
}
