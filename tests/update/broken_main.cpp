// A client that updates well but dies, or with RVL_TEST_HANG in its environment hangs, when it is to be the
// service.

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <thread>

#define main RunClient
#include "app/main.cpp"
#undef main

int main(int argc, char** argv) {
    const bool isService = argc > 1 && std::strncmp(argv[1], "-service_mode", 13) == 0;
    if (isService && std::getenv("RVL_TEST_HANG") != nullptr)
        std::this_thread::sleep_for(std::chrono::hours(1));
    return isService ? 99 : RunClient(argc, argv);
}
