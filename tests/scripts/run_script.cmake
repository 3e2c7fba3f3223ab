# Runs SCRIPT with the program CONSOLE on FOLDER/sample: the folder left by an earlier script when it GOES_ON, otherwise
# an imaginary center made by the program VIRTUAL_FWD.

function(make_center)
  file(REMOVE_RECURSE "${FOLDER}")
  file(MAKE_DIRECTORY "${FOLDER}/sample")
  file(STRINGS "${SCRIPT}" first_line LIMIT_COUNT 1)
  # The accelerometer's drops are large files that few scripts read.
  set(options --reference-trials 0)
  if(first_line MATCHES "^# sample:(.*)")
    separate_arguments(own UNIX_COMMAND "${CMAKE_MATCH_1}")
    list(APPEND options ${own})
  endif()
  execute_process(COMMAND "${VIRTUAL_FWD}" --folder sample ${options} WORKING_DIRECTORY "${FOLDER}" RESULT_VARIABLE failed)
  if(failed)
    message(FATAL_ERROR "The imaginary center could not be made.")
  endif()
  # The fake converter and the template of the certificate.
  file(COPY "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../../sample/" DESTINATION "${FOLDER}/sample")
  file(COPY "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/files/" DESTINATION "${FOLDER}/sample")
endfunction()

if(NOT GOES_ON)
  make_center()
endif()
execute_process(COMMAND "${CONSOLE}" --folder sample "${SCRIPT}" WORKING_DIRECTORY "${FOLDER}" RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "${SCRIPT} did not hold.")
endif()

# "# ends: FILE" in the script: from its first earlier calibration on, FILE is to be as in SCRIPT's file ".ends".
file(STRINGS "${SCRIPT}" ends REGEX "^# ends: ")
if(ends)
  string(REPLACE "# ends: " "" result "${ends}")
  string(REPLACE ".script" ".ends" wanted_file "${SCRIPT}")
  file(READ "${FOLDER}/${result}" found HEX)
  file(READ "${wanted_file}" wanted HEX)
  # "[Device Calibration_1]" in hexadecimal.
  string(FIND "${found}" "5b4465766963652043616c6962726174696f6e5f315d" start)
  if(start LESS 0)
    message(FATAL_ERROR "${result} has no earlier calibration.")
  endif()
  string(SUBSTRING "${found}" ${start} -1 found)
  if(NOT found STREQUAL wanted)
    message(FATAL_ERROR "${result} does not end as ${wanted_file}.")
  endif()
endif()
