# The Debian packages, which cpack makes: one for each component of the installation.
set(packages qxconf)
if(QX_BUILD_APP)
    list(APPEND packages qx-configurator qxcontrols-designer)
endif()
if(QX_BUILD_PYTHON)
    list(APPEND packages python3-qxcontrols)
endif()
list(APPEND packages libqxcontrols-dev)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME qxcontrols)
set(CPACK_PACKAGE_CONTACT "The QXControls authors <${QX_PACKAGER}>")
set(CPACK_COMPONENTS_ALL ${packages})
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/debian/Finish.cmake)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# qx_package(NAME section text...): its section of the distribution and its description.
function(qx_package name section title)
    string(TOUPPER ${name} key)
    string(JOIN "\n" text ${ARGN})
    set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${name} PARENT_SCOPE)
    set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${section} PARENT_SCOPE)
    set(CPACK_COMPONENT_${key}_DESCRIPTION "${title}\n${text}" PARENT_SCOPE)
    set(documents ${CMAKE_INSTALL_DATADIR}/doc/${name})
    install(FILES packaging/debian/copyright DESTINATION ${documents} COMPONENT ${name})
    install(FILES CHANGELOG.md DESTINATION ${documents} RENAME changelog COMPONENT ${name})
    install(FILES ${PROJECT_BINARY_DIR}/description/changelog.Debian DESTINATION ${documents}
            COMPONENT ${name})
endfunction()
string(TIMESTAMP QX_RELEASE_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(packaging/debian/changelog.in ${PROJECT_BINARY_DIR}/description/changelog.Debian @ONLY)

qx_package(qxconf utils "program point-of-sale keyboards from the command line"
           "Reads, checks, compares and writes the configuration of modular point-of-sale"
           "keyboards: one keyboard, or a shop's keyboards by a batch job. Every write is"
           "backed up and read back. Without a keyboard it works with a simulated one.")
qx_package(qx-configurator utils "program point-of-sale keyboards"
           "A window with a page for each module of a modular point-of-sale keyboard:"
           "programmable keys, layered function keys, POS keys, barcode reader and"
           "magnetic card reader. Every write is reviewed before it begins, backed up"
           "and read back. Without a keyboard it works with a simulated one.")
qx_package(libqxcontrols-dev libdevel "libraries for programs that program point-of-sale keyboards"
           "The control library, which needs the standard library alone, the host layer,"
           "the simulated keyboard, and the views and widgets for Qt 6: headers, static"
           "libraries, and their CMake package.")
qx_package(python3-qxcontrols python "program point-of-sale keyboards from Python"
           "Documents, plans, verified writes, recovery of interrupted writes and simulated"
           "keyboards of modular point-of-sale keyboards, for scripts and their tests.")
qx_package(qxcontrols-designer libdevel "Qt Designer plug-in of the QXControls widgets"
           "Offers the views of point-of-sale keyboards' modules as widgets with"
           "properties, in Qt Designer and its form loader.")

# Files of the driver host, the simulated keyboard and the layouts come with qxconf.
set(CPACK_DEBIAN_QX-CONFIGURATOR_PACKAGE_DEPENDS "qxconf (= ${PROJECT_VERSION}-1)")
# For texts of Qt's own dialogs.
set(CPACK_DEBIAN_QX-CONFIGURATOR_PACKAGE_RECOMMENDS "qt6-translations-l10n, qt6-wayland")
# The control library itself needs none of them.
set(CPACK_DEBIAN_LIBQXCONTROLS-DEV_PACKAGE_RECOMMENDS
    "nlohmann-json3-dev (>= 3.11), qt6-base-dev, qxconf (= ${PROJECT_VERSION}-1)")
set(CPACK_DEBIAN_LIBQXCONTROLS-DEV_PACKAGE_SUGGESTS "qt6-svg-dev, qxcontrols-designer")
set(CPACK_DEBIAN_QXCONF_PACKAGE_SUGGESTS "qx-configurator, bash-completion")
if(QX_BUILD_PYTHON)
    # The module is of one version of the interpreter.
    set(Python3_ROOT_DIR /usr)
    find_package(Python3 REQUIRED COMPONENTS Interpreter)
    math(EXPR next "${Python3_VERSION_MINOR} + 1")
    set(CPACK_DEBIAN_PYTHON3-QXCONTROLS_PACKAGE_DEPENDS
        "python3 (>= 3.${Python3_VERSION_MINOR}), python3 (<< 3.${next}), qxconf (= ${PROJECT_VERSION}-1)")
    set(CPACK_DEBIAN_PYTHON3-QXCONTROLS_PACKAGE_CONTROL_EXTRA
        ${CMAKE_CURRENT_LIST_DIR}/python/postinst ${CMAKE_CURRENT_LIST_DIR}/python/prerm)
endif()

include(CPack)
