# The libraries that other projects link.

# qx_library(target NAME): other projects link it as QXControls::NAME, and are compiled as C++20.
function(qx_library target name)
    add_library(QXControls::${name} ALIAS ${target})
    set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
    target_compile_features(${target} PUBLIC cxx_std_20)
endfunction()

# qx_public_headers(target files...): the headers of this folder that users of the library include,
# with their paths relative to src. Other headers are private. In this project all headers are
# found; another project that adds this one only sees links to the public headers of the libraries
# it links.
function(qx_public_headers target)
    list(TRANSFORM ARGN PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
    target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR}/src
                                    FILES ${ARGN})
    if(PROJECT_IS_TOP_LEVEL)
        return()
    endif()
    set(base ${PROJECT_BINARY_DIR}/include/${target})
    foreach(header ${ARGN})
        file(RELATIVE_PATH name ${PROJECT_SOURCE_DIR}/src ${header})
        cmake_path(GET name PARENT_PATH folder)
        file(MAKE_DIRECTORY ${base}/${folder})
        file(CREATE_LINK ${header} ${base}/${name} COPY_ON_ERROR SYMBOLIC)
    endforeach()
    set_target_properties(${target} PROPERTIES
                          INTERFACE_INCLUDE_DIRECTORIES "$<BUILD_INTERFACE:${base}>")
endfunction()
