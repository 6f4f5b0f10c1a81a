// Two libraries for testing the search for dependencies: the one built with QX_NEEDY needs the
// other.
extern "C" {
#ifdef QX_NEEDY
__declspec(dllimport) int QxNumber();
__declspec(dllexport) int QxTwice() {
    return 2 * QxNumber();
}
#else
__declspec(dllexport) int QxNumber() {
    return 21;
}
#endif
}
