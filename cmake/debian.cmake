# Run by cpack before it packs: what Debian asks of a package and an installation elsewhere does without. Each package has
# its documents under its own name, so that two versions stand side by side, its copyright and a changelog; manual pages
# are compressed, and the font is that of its own package.
if(NOT CPACK_GENERATOR STREQUAL DEB)
  return()
endif()
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC) # that of SOURCE_DATE_EPOCH where it is set
set(changelog "qevcommon (${CPACK_PACKAGE_VERSION}) unstable; urgency=medium

  * Version ${CPACK_PACKAGE_VERSION}; CHANGELOG.md of libqevcommon tells what has changed.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}
")
file(READ ${CPACK_QEV_SOURCES}/NOTICE notice)
function(compress file)
  execute_process(COMMAND gzip -9nf ${file} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

foreach(component ${CPACK_COMPONENTS_ALL})
  string(TOUPPER ${component} upper)
  set(root ${CPACK_TEMPORARY_DIRECTORY}/${component}/usr)
  set(documents ${root}/share/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
  if(EXISTS ${root}/share/doc/QevCommon)
    file(RENAME ${root}/share/doc/QevCommon ${documents})
  endif()
  file(WRITE ${documents}/copyright "${notice}
On Debian systems the texts of the common licences are in /usr/share/common-licenses (GPL-2, GPL-3, LGPL-2.1, Apache-2.0).
")
  file(WRITE ${documents}/changelog "${changelog}")
  compress(${documents}/changelog)
  file(GLOB manuals ${root}/share/man/man1/*.1)
  foreach(manual ${manuals})
    compress(${manual})
  endforeach()
  file(REMOVE_RECURSE ${root}/share/qev)
endforeach()
