// A client that updates well but dies, or with RVL_TEST_HANG in its environment hangs, when it is to be the service.

#include <unistd.h>

#include <cstdlib>
#include <cstring>

#define main RunClient
#include "app/main.cpp"
#undef main

int main(int argc, char** argv) {
    const bool isService = argc > 1 && std::strncmp(argv[1], "-service_mode", 13) == 0;
    if (isService && std::getenv("RVL_TEST_HANG") != nullptr) pause();
    return isService ? 99 : RunClient(argc, argv);
}
