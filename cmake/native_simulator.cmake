# The end-to-end tests of the Windows build need the simulated meter, which is a program of this machine.
# Building it from here makes `cmake --workflow --preset win64` complete by itself.
if(NOT EXISTS ${SOURCE}/build/native/build.ninja)
  execute_process(COMMAND ${CMAKE_COMMAND} --preset native WORKING_DIRECTORY ${SOURCE}
                  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --build --preset native --target orvane-sim WORKING_DIRECTORY ${SOURCE}
                COMMAND_ERROR_IS_FATAL ANY)
