# The add-in as the office's extension manager takes it, in three places: beside
# the component for `korvane open`, in the extension file, and for all users of a
# Debian system. They differ in where the component lies.
set(extension ${CMAKE_CURRENT_LIST_DIR})

if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64)$")
  set(platform Linux_x86_64)
elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "^(aarch64|arm64)$")
  set(platform Linux_AARCH64)
else()
  set(platform Linux_${CMAKE_SYSTEM_PROCESSOR})
endif()
string(TOLOWER ${platform} platform_lower)

set(described ${CMAKE_CURRENT_BINARY_DIR}/extension)
configure_file(${extension}/manifest.xml.in ${described}/META-INF/manifest.xml @ONLY)
configure_file(${extension}/description.xml.in ${described}/description.xml @ONLY)
configure_file(${extension}/description.txt ${described}/description.txt COPYONLY)
configure_file(${CMAKE_SOURCE_DIR}/src/bindings/resources/pictures/IMGPROGRAM.svg
               ${described}/korvane.svg COPYONLY)

# korvane_components(URI FOLDER): writes the list of what is in the component;
# URI is where that lies as seen from FOLDER.
function(korvane_components uri folder)
  configure_file(${extension}/korvane.components.in ${folder}/korvane.components @ONLY)
endfunction()

# For `korvane open`, within the build folder and where that is installed.
set(started ${CMAKE_BINARY_DIR}/lib/korvane/calc)
korvane_components(../libkorvane-office.so ${started})
foreach(name Jobs ProtocolHandler)
  set(file registry/data/org/openoffice/Office/${name}.xcu)
  configure_file(${extension}/${file} ${started}/${file} COPYONLY)
endforeach()
install(DIRECTORY ${started} DESTINATION lib/korvane)

# The extension file has everything in it.
korvane_components(libkorvane-office.so ${CMAKE_CURRENT_BINARY_DIR}/oxt)
set(alone COMPONENT extension EXCLUDE_FROM_ALL)
install(DIRECTORY ${described}/ ${CMAKE_CURRENT_BINARY_DIR}/oxt/ DESTINATION . ${alone})
install(DIRECTORY ${extension}/registry DESTINATION . ${alone})
install(TARGETS korvane_office LIBRARY DESTINATION . ${alone})
install(TARGETS korvane-view RUNTIME DESTINATION . ${alone})
if(KORVANE_MANUAL)
  install(DIRECTORY ${KORVANE_MANUAL_DIR} DESTINATION . ${alone})
endif()
add_custom_target(korvane_oxt
  COMMAND ${CMAKE_SOURCE_DIR}/tools/make_oxt.sh ${CMAKE_BINARY_DIR}
  DEPENDS korvane_all VERBATIM)

# For all users: unpacked in the office's own folder, as Debian's packages of
# extensions have it. The component is the one of the package.
set(everybody lib/libreoffice/share/extensions/korvane)
korvane_components(../../../../korvane/libkorvane-office.so ${CMAKE_CURRENT_BINARY_DIR}/everybody)
set(shared COMPONENT everybody EXCLUDE_FROM_ALL)
install(DIRECTORY ${described}/ ${CMAKE_CURRENT_BINARY_DIR}/everybody/ DESTINATION ${everybody} ${shared})
install(DIRECTORY ${extension}/registry DESTINATION ${everybody} ${shared})
