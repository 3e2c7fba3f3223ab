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
# The review asks for the converter to be there and does not start it.
file(TOUCH "${FOLDER}/sample/Ferrylink.exe")

execute_process(COMMAND "${CONSOLE}" --folder sample "${SCRIPT}" WORKING_DIRECTORY "${FOLDER}" RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "The script did not hold.")
endif()
