# The data files of the program directory, compiled from readable sources: definitions of the tables,
# currencies, VAT rates, the charts of accounts that new companies may start with.

# compilar_datos(<file> COMMAND ... DEPENDS ...): a file of the program directory, installed with it.
set(archivos_datos)
function(compilar_datos destino)
  cmake_parse_arguments(A "" "" "COMMAND;DEPENDS" ${ARGN})
  set(salida "${TARVOLINE_PROGRAMA}/${destino}")
  add_custom_command(OUTPUT "${salida}" COMMAND ${A_COMMAND} "${salida}" DEPENDS ${A_DEPENDS}
    COMMENT "${destino}" VERBATIM)
  set(archivos_datos ${archivos_datos} "${salida}" PARENT_SCOPE)
endfunction()

set(tablas "${CMAKE_CURRENT_SOURCE_DIR}/tablas")
set(fuentes_comunes "${tablas}/planc.tabla" "${tablas}/extra.tabla")  # others take their fields
foreach(tabla planc extra datos iva01 efect presu costo plana anali inmo3 guid1 datgl)
  string(TOUPPER "${tabla}.qza" destino)
  compilar_datos("${destino}"
    COMMAND qztabla definir "${tablas}/${tabla}.tabla"
    DEPENDS qztabla "${tablas}/${tabla}.tabla" ${fuentes_comunes})
endforeach()

set(monedas "${CMAKE_CURRENT_SOURCE_DIR}/monedas")
foreach(tabla Moneda Moneda1)
  string(TOLOWER "${tabla}.monedas" fuente)
  compilar_datos("${tabla}.QZF" COMMAND qztabla monedas "${monedas}/${fuente}" DEPENDS qztabla "${monedas}/${fuente}")
endforeach()
set(tipos "${CMAKE_CURRENT_SOURCE_DIR}/iva/iva03.tipos")
compilar_datos(IVA03.QZF COMMAND qztabla iva "${tipos}" DEPENDS qztabla "${tipos}")

set(planes "${CMAKE_CURRENT_SOURCE_DIR}/planes")
foreach(numero 00 01 02)
  set(plan "${TARVOLINE_PROGRAMA}/PLANC${numero}.QZD" "${TARVOLINE_PROGRAMA}/PLANC${numero}.QZC")
  add_custom_command(OUTPUT ${plan}
    COMMAND qztabla plan "${planes}/planc${numero}.plan" "${TARVOLINE_PROGRAMA}/PLANC${numero}.QZD"
    DEPENDS qztabla "${planes}/planc${numero}.plan" "${planes}/comun.plan" "${TARVOLINE_PROGRAMA}/PLANC.QZA"
    COMMENT "PLANC${numero}.QZD" VERBATIM)
  list(APPEND archivos_datos ${plan})
endforeach()

add_custom_target(tarvoline_datos DEPENDS ${archivos_datos})
add_dependencies(tarvoline_share tarvoline_datos)
install(FILES ${archivos_datos} DESTINATION "${CMAKE_INSTALL_DATADIR}/tarvoline")
