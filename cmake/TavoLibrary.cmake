# tavo_add_library(NAME DIR [LINKS ...] [EXCLUDE subfolder ...]): a shared library built from every
# source below DIR but the excluded subfolders. Sources are globbed so that a new file in a subsystem
# folder needs no edit here.
function(tavo_add_library name dir)
    cmake_parse_arguments(ARG "" "" "LINKS;EXCLUDE" ${ARGN})
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${dir}/*.cpp")
    foreach(excluded ${ARG_EXCLUDE})
        list(FILTER sources EXCLUDE REGEX "^${dir}/${excluded}/")
    endforeach()
    add_library(${name} SHARED ${sources})
    add_library(TavoXMLUtils::${name} ALIAS ${name})
    target_include_directories(${name} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE tavo_warnings)
    # The public headers need C++20; consumers get it through the exported target.
    target_compile_features(${name} PUBLIC cxx_std_20)
    string(TOUPPER ${name} upper)
    target_compile_definitions(${name} PRIVATE ${upper}_BUILDING)
    set_target_properties(${name} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
endfunction()

# tavo_add_programs(DIR [INSTALL]): one program per .cpp file directly in DIR, linked against the public
# library; with INSTALL the programs go to the installed bin folder.
function(tavo_add_programs dir)
    cmake_parse_arguments(ARG "INSTALL" "" "" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS "${dir}/*.cpp")
    foreach(source ${sources})
        get_filename_component(name ${source} NAME_WE)
        add_executable(${name} ${source})
        target_link_libraries(${name} PRIVATE TavoXMLUtils tavo_warnings)
        if(ARG_INSTALL)
            install(TARGETS ${name} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
        endif()
    endforeach()
endfunction()
