# The rules of `cmake --install`. Its components have the names of the packages.
include(CMakePackageConfigHelpers)
set(cmake_folder ${CMAKE_INSTALL_LIBDIR}/cmake/QXControls)

# qx_install_libraries(SET targets...): installs the libraries, their headers and their CMake
# package files. The headers of the control library are in the include folder, those of other
# libraries in a subfolder, since their paths do not begin with the project's name.
function(qx_install_libraries set)
    foreach(target ${ARGN})
        get_target_property(name ${target} EXPORT_NAME)
        set(headers ${CMAKE_INSTALL_INCLUDEDIR})
        if(NOT name STREQUAL "controls")
            string(APPEND headers /qxcontrols-${name})
        endif()
        install(TARGETS ${target} EXPORT ${set} COMPONENT libqxcontrols-dev
                ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT libqxcontrols-dev
                FILE_SET HEADERS DESTINATION ${headers} COMPONENT libqxcontrols-dev)
    endforeach()
    install(EXPORT ${set} NAMESPACE QXControls:: DESTINATION ${cmake_folder}
            FILE QXControls-${set}.cmake COMPONENT libqxcontrols-dev)
endfunction()

# qx_install_desktop(): the application's entry in menus, icon, description for software centres, and
# the types of its files.
function(qx_install_desktop)
    set(id org.qxcontrols.Configurator)
    string(TIMESTAMP QX_RELEASE_DATE "%Y-%m-%d" UTC) # or that of SOURCE_DATE_EPOCH
    configure_file(packaging/desktop/${id}.metainfo.xml.in
                   ${PROJECT_BINARY_DIR}/description/${id}.metainfo.xml @ONLY)
    set(data ${CMAKE_INSTALL_DATADIR})
    install(FILES packaging/desktop/qx-configurator.desktop DESTINATION ${data}/applications
            COMPONENT qx-configurator)
    install(FILES ${PROJECT_BINARY_DIR}/description/${id}.metainfo.xml
            DESTINATION ${data}/metainfo COMPONENT qx-configurator)
    install(FILES packaging/desktop/qxcontrols.xml DESTINATION ${data}/mime/packages
            COMPONENT qx-configurator)
    install(FILES packaging/desktop/qx-configurator.svg
            DESTINATION ${data}/icons/hicolor/scalable/apps COMPONENT qx-configurator)
endfunction()

# qx_install_documents(PACKAGE names...): files of docs/.
function(qx_install_documents package)
    list(TRANSFORM ARGN PREPEND docs/)
    install(FILES ${ARGN} DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package}
            COMPONENT ${package})
endfunction()

qx_install_libraries(controls qxcontrols)
qx_install_documents(libqxcontrols-dev library.md)
install(DIRECTORY examples/console examples/qt COMPONENT libqxcontrols-dev
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libqxcontrols-dev/examples)
if(QX_BUILD_HOST)
    set_target_properties(qxjsonheaders PROPERTIES EXPORT_NAME jsonheaders)
    qx_install_libraries(host qxfiles qxjsonheaders qxjson qxhost qxsimulator)
    install(TARGETS qxsimdriver LIBRARY DESTINATION ${QX_MODULES} COMPONENT qxconf)
    install(DIRECTORY models layouts captions DESTINATION ${QX_DATA} COMPONENT qxconf
            FILES_MATCHING PATTERN *.json PATTERN *.qxl)
endif()
if(QX_BUILD_APP)
    qx_install_libraries(views qxkeypainting qxviews)
    qx_install_libraries(sheet qxsheet)
    qx_install_libraries(widgets qxwidgets)
    # Where Qt Designer of the same root looks for it.
    install(TARGETS qxdesigner LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/qt6/plugins/designer
                                       COMPONENT qxcontrols-designer)
    install(TARGETS qx-configurator RUNTIME COMPONENT qx-configurator)
    install(TARGETS qxsheetmodule LIBRARY DESTINATION ${QX_MODULES} COMPONENT qx-configurator)
    install(FILES docs/qx-configurator.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
            COMPONENT qx-configurator)
    qx_install_desktop()
endif()
if(QX_BUILD_CLI OR QX_BUILD_APP)
    install(TARGETS qxdriverhost RUNTIME DESTINATION ${QX_HELPERS} COMPONENT qxconf)
endif()
if(QX_BUILD_CLI)
    install(TARGETS qxconf RUNTIME COMPONENT qxconf)
    install(TARGETS qxbatchworker RUNTIME DESTINATION ${QX_HELPERS} COMPONENT qxconf)
    install(FILES docs/qxconf.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT qxconf)
    install(FILES docs/qxcontrols-document.5 DESTINATION ${CMAKE_INSTALL_MANDIR}/man5
            COMPONENT qxconf)

    qx_install_documents(qxconf batch.md documents.md fleet.md json.md layouts.md reliability.md
                         sequences.md simulated-keyboard.md test-drive.md)

    # Each shell has its own folder and file name for completions.
    function(qx_install_completion shell folder name)
        set(file ${PROJECT_BINARY_DIR}/completion/${shell}/${name})
        add_custom_command(OUTPUT ${file} COMMAND qxconf completion ${shell} > ${file}
                           DEPENDS qxconf VERBATIM)
        set_property(TARGET qxcompletions APPEND PROPERTY SOURCES ${file})
        file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/completion/${shell})
        install(FILES ${file} DESTINATION ${CMAKE_INSTALL_DATADIR}/${folder} COMPONENT qxconf)
    endfunction()
    add_custom_target(qxcompletions ALL)
    add_custom_target(qxschemas ALL)
    foreach(name document result error job report journal backup receipt)
        set(schema ${PROJECT_BINARY_DIR}/description/${name}.schema.json)
        add_custom_command(OUTPUT ${schema} COMMAND qxconf schema ${name} > ${schema}
                           DEPENDS qxconf VERBATIM)
        set_property(TARGET qxschemas APPEND PROPERTY SOURCES ${schema})
        install(FILES ${schema} DESTINATION ${QX_DATA}/schemas COMPONENT qxconf)
    endforeach()
    qx_install_completion(bash bash-completion/completions qxconf)
    qx_install_completion(zsh zsh/vendor-completions _qxconf)
    qx_install_completion(fish fish/vendor_completions.d qxconf.fish)
endif()

if(QX_BUILD_PYTHON)
    set(python lib/python3/dist-packages/qxcontrols) # where Debian's interpreter looks below /usr
    install(TARGETS qxpython LIBRARY DESTINATION ${python} COMPONENT python3-qxcontrols)
    install(DIRECTORY src/python/qxcontrols/ DESTINATION ${python} COMPONENT python3-qxcontrols
            PATTERN __pycache__ EXCLUDE)
    qx_install_documents(python3-qxcontrols python.md)
endif()

set(description ${PROJECT_BINARY_DIR}/description)
configure_package_config_file(packaging/QXControlsConfig.cmake.in
                              ${description}/QXControlsConfig.cmake
                              INSTALL_DESTINATION ${cmake_folder}
                              NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${description}/QXControlsConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${description}/QXControlsConfig.cmake ${description}/QXControlsConfigVersion.cmake
        DESTINATION ${cmake_folder} COMPONENT libqxcontrols-dev)

# The control library for builds without CMake.
set(pkgconfig_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX
           BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}/${pkgconfig_folder} OUTPUT_VARIABLE QX_ROOT)
configure_file(packaging/qxcontrols.pc.in ${description}/qxcontrols.pc @ONLY)
install(FILES ${description}/qxcontrols.pc DESTINATION ${pkgconfig_folder}
        COMPONENT libqxcontrols-dev)
