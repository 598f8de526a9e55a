# The folder "licenses" beside the programs: the terms of everything that they are linked with or
# need at run time, from the copyright files of the Debian packages that it comes from, and the texts
# of the licenses that those only name.
set(licensed_packages
    libqt6core6
    libqt6qml6
    libqt6svg6
    qml6-module-qt5compat-graphicaleffects
    nlohmann-json3-dev
    libsodium23
    libstdc++6)
set(license_texts GPL-2 GPL-3 LGPL-2.1 LGPL-3 GFDL-1.3 Apache-2.0)
set(licenses_folder ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/licenses)

set(notices "Tidewell is linked with the software of these packages. Their notices stand in the files\n"
            "beside this one, the full texts of the licenses that they name in the folder \"texts\".\n\n")
string(CONCAT notices ${notices})
foreach(package IN LISTS licensed_packages)
  set(copyright /usr/share/doc/${package}/copyright)
  if(EXISTS ${copyright})
    configure_file(${copyright} ${licenses_folder}/${package}.txt COPYONLY)
    string(APPEND notices "    ${package}.txt\n")
  else()
    message(WARNING "${copyright} is missing: the folder of licenses is not complete")
  endif()
endforeach()
foreach(text IN LISTS license_texts)
  if(EXISTS /usr/share/common-licenses/${text})
    configure_file(/usr/share/common-licenses/${text} ${licenses_folder}/texts/${text}.txt COPYONLY)
  endif()
endforeach()
string(APPEND notices "\nQt is used under the GNU Lesser General Public License, version 3, and linked dynamically: it can be\n"
                      "replaced by another build of it.\n")
file(CONFIGURE OUTPUT ${licenses_folder}/THIRD_PARTY_NOTICES.txt CONTENT "${notices}" @ONLY)
