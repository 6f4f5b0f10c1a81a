// A target that links the control library sees its public headers, and no others.
#if !__has_include("qxcontrols/device/QXKeyboardAccess.h")
#error "the control library's headers are missing"
#endif
#if __has_include("qxcontrols/common/Text.h") ||                                                   \
                  __has_include(                                                                   \
                      "host/Session.h") ||                                                         \
                      __has_include(                                                               \
                          "files/Files.h") ||                                                      \
                          __has_include("simulator/SimulatedDriver.h") ||                          \
                                        __has_include("app/MainWindow.h") ||                       \
                                                      __has_include("qxcontrols/CMakeLists.txt")
#error "headers that are not the control library's own, or not public"
#endif
