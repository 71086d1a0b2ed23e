#include "app/startup.h"

int main(int argc, char **argv)
{
    return qMain(argc, argv);
}
