// Prints the digest of a file, as GET_FILE_MD5 takes it.

#include <iostream>

#include "runtime/file_digest.h"

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    std::cout << rvl::MD5SumOfFile(argv[1]) << "\n";
    return 0;
}
