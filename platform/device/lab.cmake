# Compiles examples/lab.json into a target as device::lab_json.
function(add_lab_device target)
    set(lab_file ${PROJECT_SOURCE_DIR}/examples/lab.json)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${lab_file})
    file(READ ${lab_file} lab_json)
    configure_file(${PROJECT_SOURCE_DIR}/platform/device/lab.cc.in ${CMAKE_CURRENT_BINARY_DIR}/lab.cc @ONLY)
    target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/lab.cc)
endfunction()
