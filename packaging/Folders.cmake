# The folders of an installation, relative to its root: programs use them to find each other and
# their data (files/Installation.h).
if(WIN32) # all in one folder
    foreach(place QX_PROGRAMS QX_HELPERS QX_MODULES QX_DATA)
        set(${place} "")
    endforeach()
    return()
endif()
include(GNUInstallDirs)
set(QX_PROGRAMS ${CMAKE_INSTALL_BINDIR})
set(QX_HELPERS ${CMAKE_INSTALL_LIBEXECDIR}/qxcontrols)
set(QX_MODULES ${CMAKE_INSTALL_LIBDIR}/qxcontrols)
set(QX_DATA ${CMAKE_INSTALL_DATADIR}/qxcontrols)
