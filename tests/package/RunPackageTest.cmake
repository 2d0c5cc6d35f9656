# Installs the build into a fresh prefix, then builds the manager-only reader twice
# against it, through find_package(iof) and with a plain `c++ ... -liof -lquarpbase`, and
# has both read a demo file.
# Arguments: BUILD_DIR, SOURCE_DIR (this directory), WORK_DIR, IOF_TOOL, CXX.
file(REMOVE_RECURSE ${WORK_DIR})
file(MAKE_DIRECTORY ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)

function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed (${rc}): ${ARGV}\n${out}\n${err}")
  endif()
  set(last_output "${out}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
run(${IOF_TOOL} demo -o ${WORK_DIR}/demo.iof)
set(libdir ${prefix}/lib)
if(NOT EXISTS ${libdir}/libiof.so)
  file(GLOB libdir LIST_DIRECTORIES true ${prefix}/lib*/*-linux-gnu)
endif()
set(ENV{LD_LIBRARY_PATH} "${libdir}")

run(${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${WORK_DIR}/user -DCMAKE_PREFIX_PATH=${prefix}
    -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_BUILD_TYPE=Release)
run(${CMAKE_COMMAND} --build ${WORK_DIR}/user)
run(${WORK_DIR}/user/reader ${WORK_DIR}/demo.iof)
message(STATUS "find_package(iof): ${last_output}")

run(${CXX} -std=c++20 -I${prefix}/include ${SOURCE_DIR}/ManagerOnlyReader.cpp -L${libdir} -liof -lquarpbase
    -o ${WORK_DIR}/plain-reader)
run(${WORK_DIR}/plain-reader ${WORK_DIR}/demo.iof)
message(STATUS "plain -liof: ${last_output}")
