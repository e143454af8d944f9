// Entry point of the client.
#include "app/start_up.h"

int main(int argc, char **argv)
{
    tideloft::app::refuseCoreDumps();
    return tideloft::app::run(argc, argv);
}
