// A shared library that is no plug-in module.

extern "C" int korCreateSomethingElse() {
    return 1;
}
