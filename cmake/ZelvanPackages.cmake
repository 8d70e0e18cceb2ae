# cpack: four .deb packages on Linux, one .zip for Windows (and with -G ZIP
# anywhere). The preset `package` builds them, with /usr as the prefix.
set(CPACK_PACKAGE_VENDOR "Zelvan authors")
set(CPACK_PACKAGE_CONTACT "Zelvan authors <zelvan@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENTS_ALL library dev)
if(TARGET zelvan_tool)
  list(APPEND CPACK_COMPONENTS_ALL tools)
endif()

if(WIN32)
  set(CPACK_GENERATOR ZIP)
else()
  set(CPACK_GENERATOR DEB)
  list(APPEND CPACK_COMPONENTS_ALL python)
endif()
# One .zip with everything.
set(CPACK_ARCHIVE_COMPONENT_INSTALL OFF)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(same_version "libzelvan${PROJECT_VERSION_MAJOR} (= ${PROJECT_VERSION})")

if(NOT WIN32)
  file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/debian/changelog entry REGEX "^zelvan \\(${PROJECT_VERSION}\\)")
  if(NOT entry)
    message(FATAL_ERROR "cmake/debian/changelog has no entry for version ${PROJECT_VERSION}")
  endif()
  zelvan_gzip(${CMAKE_CURRENT_LIST_DIR}/debian/changelog ${PROJECT_BINARY_DIR}/changelog.gz)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/libzelvan-dev COMPONENT dev EXCLUDE_FROM_ALL
    PATTERN man EXCLUDE PATTERN Doxyfile EXCLUDE)
  install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/libzelvan-dev COMPONENT dev EXCLUDE_FROM_ALL)
endif()

# zelvan_debian(component package section summary text...)
function(zelvan_debian component package section summary)
  string(TOUPPER ${component} key)
  string(JOIN "\n" text ${ARGN})
  set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${package} PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_DESCRIPTION "${summary}\n${text}" PARENT_SCOPE)
  if(NOT WIN32)
    # In the packages alone: Debian wants licence and changelog under the package's name.
    set(documents ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package})
    install(FILES ${PROJECT_SOURCE_DIR}/LICENSE RENAME copyright
      DESTINATION ${documents} COMPONENT ${component} EXCLUDE_FROM_ALL)
    install(FILES ${PROJECT_BINARY_DIR}/changelog.gz
      DESTINATION ${documents} COMPONENT ${component} EXCLUDE_FROM_ALL)
  endif()
endfunction()

zelvan_debian(library libzelvan${PROJECT_VERSION_MAJOR} libs
  "polygon triangulation and Booleans - shared library"
  "Zelvan cuts polygons with holes into triangles, unites and subtracts them,"
  "computing in exact integers, behind a flat C interface. It also holds a"
  "toolkit of vectors, matrices and transforms in space for C++.")
zelvan_debian(dev libzelvan-dev libdevel
  "polygon triangulation and Booleans - development files"
  "The headers of Zelvan, for C and C++, with what CMake and pkg-config need to"
  "find them.")
zelvan_debian(tools zelvan-tools science
  "polygon triangulation and Booleans - command line"
  "The program zelvan reads polygons from GeoJSON, WKT, GeoPackage, Shapefile,"
  "FlatGeobuf, TopoJSON and DXF, cuts them into triangles, unites or subtracts"
  "them, and writes the same, SVG and OBJ.")
zelvan_debian(python python3-zelvan python
  "polygon triangulation and Booleans - Python 3"
  "The package zelvan: regions as values, united, intersected, subtracted and cut"
  "into triangles. It speaks with numpy, shapely and geopandas, and needs none.")
set(CPACK_DEBIAN_PYTHON_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "python3 (>= 3.9), ${same_version}")
set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS "python3-numpy, python3-shapely")
set(CPACK_DEBIAN_PYTHON_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA
  ${CMAKE_CURRENT_LIST_DIR}/debian/postinst ${CMAKE_CURRENT_LIST_DIR}/debian/prerm)
# A trigger has ldconfig run, once for all packages. Scripts that call it are generated unless
# others are named in their place; those that are not there are passed over.
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_LIST_DIR}/debian/triggers
  ${CMAKE_CURRENT_LIST_DIR}/debian/none/postinst ${CMAKE_CURRENT_LIST_DIR}/debian/none/postrm)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "${same_version}")
set(CPACK_DEBIAN_DEV_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${same_version}")

include(CPack)
