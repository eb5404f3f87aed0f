# Installe l'arbre de construction ARBRE dans TRAVAIL/prefixe, puis construit et lance le
# programme CLIENT contre le paquet installé, une fois par find_package, une fois par
# pkg-config.
set(prefixe ${TRAVAIL}/prefixe)
file(REMOVE_RECURSE ${TRAVAIL})

function(lance)
    execute_process(COMMAND ${ARGV} RESULT_VARIABLE code)
    if(NOT code EQUAL 0)
        message(FATAL_ERROR "échec (${code}) : ${ARGV}")
    endif()
endfunction()

lance(${CMAKE_COMMAND} --install ${ARBRE} --prefix ${prefixe})
foreach(methode CMake PkgConfig)
    set(client ${TRAVAIL}/client-${methode})
    lance(${CMAKE_COMMAND} -S ${CLIENT} -B ${client} -G Ninja
          -DCMAKE_CXX_COMPILER=${COMPILATEUR}
          -DCMAKE_PREFIX_PATH=${prefixe}
          -DDOSSIER_BIB=${DOSSIER_BIB}
          -DMETHODE=${methode})
    lance(${CMAKE_COMMAND} --build ${client})
    lance(${client}/client)
endforeach()
