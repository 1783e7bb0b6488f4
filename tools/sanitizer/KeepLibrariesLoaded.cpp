// Linked into sanitized programs only. The leak check runs at exit, after the OpenGL driver
// has been unloaded, and an allocation whose code is gone can be neither named nor
// suppressed. Keeping every library loaded to the end leaves the driver's own allocations to
// the suppressions in tests/support/lsan.supp, and ours to the check.
extern "C" int dlclose(void *)
{
    return 0;
}
