# Installation: the three libraries, their headers (folder structure kept), a CMake package and a
# pkg-config file.
include(CMakePackageConfigHelpers)

install(TARGETS TavoRoot Vesk TavoXMLUtils EXPORT TavoXMLUtilsTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
foreach(dir TavoRoot Vesk TavoXMLUtils)
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/${dir}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${dir}
        FILES_MATCHING PATTERN "*.hpp" PATTERN internal EXCLUDE)
endforeach()

set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/TavoXMLUtils)
install(EXPORT TavoXMLUtilsTargets NAMESPACE TavoXMLUtils:: DESTINATION ${config_dir})

# The optional assertion library has an export set of its own, which the package loads when present.
if(TARGET TavoXMLUtilsTesting)
    install(TARGETS TavoXMLUtilsTesting EXPORT TavoXMLUtilsTestingTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
    install(EXPORT TavoXMLUtilsTestingTargets NAMESPACE TavoXMLUtils:: DESTINATION ${config_dir})
endif()
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/TavoXMLUtilsConfig.cmake.in
    ${PROJECT_BINARY_DIR}/TavoXMLUtilsConfig.cmake INSTALL_DESTINATION ${config_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/TavoXMLUtilsConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/TavoXMLUtilsConfig.cmake
    ${PROJECT_BINARY_DIR}/TavoXMLUtilsConfigVersion.cmake DESTINATION ${config_dir})

# The pkg-config file finds the prefix from where it lies, <prefix>/<libdir>/pkgconfig, for any libdir.
file(RELATIVE_PATH TAVO_PC_TO_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" TAVO_PC_TO_PREFIX "${TAVO_PC_TO_PREFIX}")
configure_file(${PROJECT_SOURCE_DIR}/cmake/tavoxmlutils.pc.in ${PROJECT_BINARY_DIR}/tavoxmlutils.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/tavoxmlutils.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
