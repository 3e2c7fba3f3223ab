# Makes the imaginary center FOLDER/sample with the program VIRTUAL_FWD and runs SCRIPT on it with the program CONSOLE.

file(REMOVE_RECURSE "${FOLDER}")
file(MAKE_DIRECTORY "${FOLDER}/sample")

file(STRINGS "${SCRIPT}" first_line LIMIT_COUNT 1)
set(options)
if(first_line MATCHES "^# sample:(.*)")
  separate_arguments(options UNIX_COMMAND "${CMAKE_MATCH_1}")
endif()
execute_process(COMMAND "${VIRTUAL_FWD}" --folder sample ${options} WORKING_DIRECTORY "${FOLDER}" RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "The imaginary center could not be made.")
endif()
# The stand-in for the converter, the template of the certificate.
file(COPY "${CMAKE_CURRENT_LIST_DIR}/../../sample/" DESTINATION "${FOLDER}/sample")

# "# first: NAME" has another script run before, as an earlier start of the program that was not ended but broke off.
set(scripts "${SCRIPT}")
set(earlier_line "${first_line}")
while(earlier_line MATCHES "^# first: *(.*)")
  list(PREPEND scripts "${CMAKE_CURRENT_LIST_DIR}/${CMAKE_MATCH_1}")
  file(STRINGS "${CMAKE_CURRENT_LIST_DIR}/${CMAKE_MATCH_1}" earlier_line LIMIT_COUNT 1)
endwhile()
foreach(script ${scripts})
  execute_process(COMMAND "${CONSOLE}" --folder sample "${script}" WORKING_DIRECTORY "${FOLDER}" RESULT_VARIABLE failed)
  if(failed)
    message(FATAL_ERROR "${script} did not hold.")
  endif()
endforeach()
