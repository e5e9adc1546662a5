# zentor_test(NAME COMMAND...): a test, with a folder for temporary files of its own. Programs of another system are given
# with what runs them before them.
function(zentor_test name)
  add_test(NAME ${name} COMMAND ${PROJECT_SOURCE_DIR}/scripts/run-test ${ARGN})
endfunction()
