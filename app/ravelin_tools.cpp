// The product's tools library: loaded at start, registered like every component the program depends on.

extern "C" {

int DllRegisterServer() {
    return 0;
}

int DllUnregisterServer() {
    return 0;
}
}
