# What a host finds after `cmake --install`: libraries, headers under include/tovrel, CMake and pkg-config packages.
include(CMakePackageConfigHelpers)

set(package_directory ${CMAKE_INSTALL_LIBDIR}/cmake/TovrelWebServices)
set(package_work_directory ${CMAKE_CURRENT_BINARY_DIR}/package)

set(installed_targets)
foreach(target IN ITEMS TovrelPlatform TovrelWebServices TovrelAccountScreens TovrelTesting)
  if(TARGET ${target})
    list(APPEND installed_targets ${target})
  endif()
endforeach()
# So that a host that links one of the shared libraries finds those behind it.
set_target_properties(${installed_targets} PROPERTIES INSTALL_RPATH "$ORIGIN")
if(TARGET TovrelAccountScreens AND NOT BUILD_SHARED_LIBS)
  # Qt keeps the resources of a static library in object libraries of their own.
  get_target_property(resource_targets TovrelAccountScreens TOVREL_RESOURCE_TARGETS)
  list(APPEND installed_targets ${resource_targets})
endif()
install(TARGETS ${installed_targets} EXPORT TovrelWebServicesTargets OBJECTS DESTINATION ${CMAKE_INSTALL_LIBDIR}/TovrelWebServices)
install(EXPORT TovrelWebServicesTargets NAMESPACE Tovrel:: DESTINATION ${package_directory})

configure_package_config_file(cmake/TovrelWebServicesConfig.cmake.in
  ${package_work_directory}/TovrelWebServicesConfig.cmake
  INSTALL_DESTINATION ${package_directory})
write_basic_package_version_file(${package_work_directory}/TovrelWebServicesConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES
  ${package_work_directory}/TovrelWebServicesConfig.cmake
  ${package_work_directory}/TovrelWebServicesConfigVersion.cmake
  DESTINATION ${package_directory})
if(NOT BUILD_SHARED_LIBS)
  # Static libraries leave their dependencies to the host.
  install(FILES cmake/TovrelDependencies.cmake DESTINATION ${package_directory})
  if(TARGET TovrelTesting)
    install(FILES cmake/TovrelTestingDependencies.cmake DESTINATION ${package_directory})
  endif()
endif()

# pkg-config: a static library names what it needs for all to link, a shared one brings that along.
set(required_packages "")
set(required_testing_packages "")
set(required_libraries "-pthread")
if(NOT BUILD_SHARED_LIBS)
  set(required_packages "libcurl openssl zlib libbrotlidec libzstd libplist-2.0 simdjson fmt libsystemd sqlite3 libsecret-1 libsodium")
  set(required_testing_packages "libnghttp2")
  set(required_libraries "-lboost_url -lboost_system -pthread")
endif()
set(web_services_library "")
if(TARGET TovrelWebServices)
  set(web_services_library "-lTovrelWebServices ")
endif()
set(pkg_config_packages tovrelwebservices)
if(TARGET TovrelTesting)
  list(APPEND pkg_config_packages tovreltesting)
endif()
# Object files, which hold the resources of the static form, have no place in pkg-config.
if(TARGET TovrelAccountScreens AND BUILD_SHARED_LIBS)
  list(APPEND pkg_config_packages tovrelaccountscreens)
endif()
foreach(package IN LISTS pkg_config_packages)
  configure_file(cmake/${package}.pc.in ${package_work_directory}/${package}.pc @ONLY)
  install(FILES ${package_work_directory}/${package}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()

# Headers: the public ones and whatever they include in turn. Looked up when installing, so that the list is never old.
install(CODE "
  set(tovrel_sources [[${PROJECT_SOURCE_DIR}/Sources]])
  set(tovrel_with_testing $<TARGET_EXISTS:TovrelTesting>)
  set(tovrel_with_account_screens $<TARGET_EXISTS:TovrelAccountScreens>)
  set(tovrel_include_directory \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_INCLUDEDIR}/tovrel\")")
install(SCRIPT cmake/TovrelInstallHeaders.cmake)
