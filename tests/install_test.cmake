# Installs into an empty folder and runs the program from there: it must name its version, and find the stock reference
# files by its own place, with nothing in the environment that helps it.
set(stage ${BUILD}/install-test)
file(REMOVE_RECURSE ${stage})
file(MAKE_DIRECTORY ${stage}/home)

function(run result)
  execute_process(
    COMMAND ${CMAKE_COMMAND} -E env --unset=WELVANE_HOME --unset=DESTDIR HOME=${stage}/home
            XDG_CONFIG_HOME=${stage}/home ${ARGN}
    WORKING_DIRECTORY ${stage}
    OUTPUT_VARIABLE output
    ERROR_VARIABLE complaints
    RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${ARGN}: status ${status}\n${output}${complaints}")
  endif()
  set(${result} "${output}" PARENT_SCOPE)
endfunction()

run(log ${CMAKE_COMMAND} --install ${BUILD} --prefix ${stage}/prefix)
set(program ${stage}/prefix/${BINDIR}/welvane)

run(version ${program} --version)
if(NOT version MATCHES "${VERSION}")
  message(FATAL_ERROR "welvane --version says \"${version}\", wanted ${VERSION}")
endif()

foreach(name units.ini para.ini curves.ini crnphi.ini)
  if(NOT EXISTS ${stage}/prefix/${DATADIR}/welvane/${name})
    message(FATAL_ERROR "${name} was not installed")
  endif()
endforeach()

file(READ ${stage}/prefix/${DATADIR}/man/man1/welvane.1 page)
file(READ ${stage}/prefix/${DATADIR}/bash-completion/completions/welvane completion)
if(NOT page MATCHES "\n.SS run\n" OR NOT completion MATCHES "-F _welvane")
  message(FATAL_ERROR "the manual page or the completion is not whole")
endif()

# GR and GRC are one channel only by the stock curve groups.
set(examples ${stage}/prefix/${DOCDIR}/examples)
run(plan ${program} run ${examples}/kestrel-7-run1.las ${examples}/kestrel-7-run2.las --splice --dry-run)
if(NOT plan MATCHES "run1.las GR [^\n]*run2.las GRC")
  message(FATAL_ERROR "the installed program does not know its stock curves:\n${plan}")
endif()
file(REMOVE_RECURSE ${stage})
