# What `cmake --install` and cpack put where: the shared library, its headers with
# all that finds them, and the host program. Three components, which are three of the
# Debian packages; the .zip holds all of them. The fourth package is bindings/python's.
include(CMakePackageConfigHelpers)

# A file compressed as Debian wants manuals and changelogs: as small as can be, without a time.
function(zelvan_gzip file to)
  find_program(ZELVAN_GZIP gzip REQUIRED)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
  execute_process(COMMAND ${ZELVAN_GZIP} -9nc ${file} OUTPUT_FILE ${to} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

install(TARGETS zelvan EXPORT zelvan-targets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT library
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT dev
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/zelvan
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev FILES_MATCHING PATTERN "*.h")
if(WIN32 AND EXISTS ${PROJECT_SOURCE_DIR}/src/interface/zelvan.def)
  # From this, compilers that cannot read the import library make their own.
  install(FILES ${PROJECT_SOURCE_DIR}/src/interface/zelvan.def
    DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev)
endif()

set(config_folder ${CMAKE_INSTALL_LIBDIR}/cmake/zelvan)
install(EXPORT zelvan-targets NAMESPACE zelvan:: DESTINATION ${config_folder} COMPONENT dev)
configure_package_config_file(
  ${CMAKE_CURRENT_LIST_DIR}/zelvan-config.cmake.in ${PROJECT_BINARY_DIR}/zelvan-config.cmake
  INSTALL_DESTINATION ${config_folder} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(
  ${PROJECT_BINARY_DIR}/zelvan-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/zelvan-config.cmake ${PROJECT_BINARY_DIR}/zelvan-config-version.cmake
  DESTINATION ${config_folder} COMPONENT dev)

# The prefix is found from where the .pc file lies: what is installed can be moved.
file(RELATIVE_PATH ZELVAN_PC_TO_PREFIX
  /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" ZELVAN_PC_TO_PREFIX "${ZELVAN_PC_TO_PREFIX}")
configure_file(${CMAKE_CURRENT_LIST_DIR}/zelvan.pc.in ${PROJECT_BINARY_DIR}/zelvan.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zelvan.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)

if(TARGET zelvan_tool)
  install(TARGETS zelvan_tool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
  if(UNIX)
    zelvan_gzip(${PROJECT_SOURCE_DIR}/docs/man/zelvan.1 ${PROJECT_BINARY_DIR}/zelvan.1.gz)
    install(FILES ${PROJECT_BINARY_DIR}/zelvan.1.gz
      DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
    if(NOT CMAKE_CROSSCOMPILING)
      # The program itself knows what it takes.
      set(data ${CMAKE_INSTALL_DATAROOTDIR})
      set(completions bash zsh fish)
      set(folders bash-completion/completions zsh/vendor-completions fish/vendor_completions.d)
      set(names zelvan _zelvan zelvan.fish)
      foreach(shell folder name IN ZIP_LISTS completions folders names)
        set(script ${PROJECT_BINARY_DIR}/completions/${name})
        add_custom_command(OUTPUT ${script}
          COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/completions
          COMMAND zelvan_tool completion ${shell} > ${script} DEPENDS zelvan_tool VERBATIM)
        list(APPEND scripts ${script})
        install(FILES ${script} DESTINATION ${data}/${folder} COMPONENT tools)
      endforeach()
      add_custom_target(zelvan_completions ALL DEPENDS ${scripts})
    endif()
    # The system's own folder is searched anyway; elsewhere the program looks beside itself.
    if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
      file(RELATIVE_PATH to_library
        /prefix/${CMAKE_INSTALL_BINDIR} /prefix/${CMAKE_INSTALL_LIBDIR})
      set_target_properties(zelvan_tool PROPERTIES INSTALL_RPATH "$ORIGIN/${to_library}")
    endif()
  endif()
endif()
install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md
  ${PROJECT_SOURCE_DIR}/LICENSE
  DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT doc)

include(ZelvanPackages)
