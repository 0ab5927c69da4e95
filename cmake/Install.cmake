# Installs the library, its public headers, the language packs, and what find_package(Support) and
# pkg-config read. platform/ is private and stays behind.
include(CMakePackageConfigHelpers)

set(SUPPORT_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Support)

install(TARGETS Support EXPORT SupportTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT SupportTargets NAMESPACE Support:: DESTINATION ${SUPPORT_CMAKE_DIR})

# The public headers are the four that give all of a subsystem, and what they include. Helpers that
# sources share stay behind.
set(unseen foundation/Foundation definition/Definition text/Text services/Services)
list(TRANSFORM unseen REPLACE "(.+)" "Support/\\1.h")
set(public_headers)
while(unseen)
  list(POP_FRONT unseen header)
  if(header IN_LIST public_headers)
    continue()
  endif()
  list(APPEND public_headers ${header})
  file(STRINGS ${PROJECT_SOURCE_DIR}/${header} includes REGEX "^#include \"Support/")
  list(TRANSFORM includes REPLACE "^#include \"(.+)\".*" "\\1")
  list(APPEND unseen ${includes})
endwhile()
foreach(header IN LISTS public_headers)
  cmake_path(GET header PARENT_PATH folder)
  install(FILES ${PROJECT_SOURCE_DIR}/${header}
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${folder})
endforeach()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/packs DESTINATION ${CMAKE_INSTALL_DATADIR}/vemra
  FILES_MATCHING PATTERN "*.pack")

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/SupportConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/SupportConfig.cmake INSTALL_DESTINATION ${SUPPORT_CMAKE_DIR})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/SupportConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/SupportConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/SupportConfigVersion.cmake DESTINATION ${SUPPORT_CMAKE_DIR})

# Relative to where the file lies, so that an installed tree can be moved.
file(RELATIVE_PATH SUPPORT_PC_TO_PREFIX
  /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(${PROJECT_SOURCE_DIR}/cmake/support.pc.in ${CMAKE_CURRENT_BINARY_DIR}/support.pc
  @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/support.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
