# Where ICU and OpenSSL are on a Mac: the system has libraries of these names too, so Homebrew keeps its own out of the
# ordinary search paths. ICU_ROOT and OPENSSL_ROOT_DIR, as variables or in the environment, name others.
find_program(BREW_PROGRAM brew)

function(nimbrel_keg variable formula)
  if(DEFINED ${variable} OR DEFINED ENV{${variable}} OR NOT BREW_PROGRAM)
    return()
  endif()
  execute_process(COMMAND "${BREW_PROGRAM}" --prefix ${formula}
    OUTPUT_VARIABLE prefix OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE status)
  if(status EQUAL 0)
    # Not kept: the next version may be elsewhere.
    set(${variable} "${prefix}" PARENT_SCOPE)
  endif()
endfunction()

nimbrel_keg(ICU_ROOT icu4c)
nimbrel_keg(OPENSSL_ROOT_DIR openssl@3)
