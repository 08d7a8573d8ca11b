// A process that links the C++ standard library and does nothing.
int main() {
    return 0;
}
