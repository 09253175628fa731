#include "shell/views/Application.h"

int main(int argc, char **argv)
{
    return varnel::runApplication(argc, argv);
}
