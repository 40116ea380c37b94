# hlx_add_simulated_test(NAME name [SCENARIO scenario] [TIMEOUT seconds] [LOG directory] COMMAND command [argument...])
#
# A test with a bus and a simulated unit of its own, which remembers nothing: `hlx-simulator run --fresh` around COMMAND,
# which may name an executable target. SCENARIO, a file or the name of one that was installed, is played meanwhile. The
# verbs (`hlx-simulator set`, `calls` and so on) are in the PATH of COMMAND.
find_program(HLX_SIMULATOR hlx-simulator HINTS ${HLXSystemClient_BIN_DIR} DOC "The simulated unit")

function(hlx_add_simulated_test)
  cmake_parse_arguments(PARSE_ARGV 0 test "" "NAME;SCENARIO;TIMEOUT;LOG" "COMMAND")
  if(NOT test_NAME OR NOT test_COMMAND OR test_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "hlx_add_simulated_test: NAME and COMMAND are needed; not known: \"${test_UNPARSED_ARGUMENTS}\"")
  elseif(NOT HLX_SIMULATOR)
    message(FATAL_ERROR "hlx_add_simulated_test: hlx-simulator is not installed (Debian: hlx-tools); or set HLX_SIMULATOR")
  endif()
  set(options --fresh)
  foreach(option SCENARIO TIMEOUT LOG)
    string(TOLOWER ${option} name)
    if(test_${option})
      list(APPEND options --${name} ${test_${option}})
    endif()
  endforeach()
  list(POP_FRONT test_COMMAND program)
  if(TARGET ${program})
    set(program $<TARGET_FILE:${program}>)
  endif()
  add_test(NAME ${test_NAME} COMMAND ${HLX_SIMULATOR} run ${options} -- ${program} ${test_COMMAND})
  get_filename_component(directory ${HLX_SIMULATOR} DIRECTORY)
  set_tests_properties(${test_NAME} PROPERTIES ENVIRONMENT "PATH=${directory}:$ENV{PATH}")
endfunction()
