// A shared object that is not a plug-in.
extern "C" __attribute__((visibility("default"))) int notAPlugin() { return 1; }
