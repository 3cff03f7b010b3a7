# What `cmake --install` lays out: the executable, the predefined macro file, the man page and the shell completion
# (made from the option table), and what turns diagnostics into other forms.
include(GNUInstallDirs)
install(PROGRAMS ${CMAKE_SOURCE_DIR}/tools/to-sarif DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${CMAKE_SOURCE_DIR}/src/errors/messages.def DESTINATION ${CMAKE_INSTALL_DATADIR}/rvparse)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/docs/editors DESTINATION ${CMAKE_INSTALL_DATADIR}/rvparse)
find_package(Python3 COMPONENTS Interpreter)
install(TARGETS rvparse RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${CMAKE_SOURCE_DIR}/lib/predefined_macros.txt DESTINATION lib)
if(Python3_FOUND)
  set(OPTION_TABLE ${CMAKE_SOURCE_DIR}/src/driver/options.def)
  set(DOCS_MAKER ${CMAKE_SOURCE_DIR}/tools/make_docs.py)
  set(MAN_PAGE ${CMAKE_BINARY_DIR}/docs/rvparse.1)
  set(COMPLETION ${CMAKE_BINARY_DIR}/docs/rvparse)
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/docs)
  add_custom_command(OUTPUT ${MAN_PAGE} DEPENDS ${OPTION_TABLE} ${DOCS_MAKER}
                     COMMAND ${Python3_EXECUTABLE} ${DOCS_MAKER} man ${OPTION_TABLE} ${MAN_PAGE})
  add_custom_command(OUTPUT ${COMPLETION} DEPENDS ${OPTION_TABLE} ${DOCS_MAKER}
                     COMMAND ${Python3_EXECUTABLE} ${DOCS_MAKER} completion ${OPTION_TABLE} ${COMPLETION})
  add_custom_target(generated_docs ALL DEPENDS ${MAN_PAGE} ${COMPLETION})
  install(FILES ${MAN_PAGE} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES ${COMPLETION} DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
endif()
