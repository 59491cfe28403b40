# The Debian package; scripts/package.sh builds it.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME nimbrel)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "The developers of Nimbrel <developers@nimbrel.app>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "encrypted clipboard history that keeps secrets secret")
set(CPACK_PACKAGE_DESCRIPTION "Nimbrel remembers what is copied and pastes it where the user is: a hot key
opens a small panel at the pointer, to search in and to paste from.
The history is sealed with AES-256-GCM under a key of the desktop's key
store. Passwords, keys, card numbers and one-time codes are recognised,
masked and forgotten after a while. Images are kept too, and found by the
text in them.
.
There are pinned clips, collections, a paste queue, text transforms,
commands for scripts and a D-Bus service.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# Libraries by what the programs are linked with; the rest by what they load or start.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS
  "qt6-image-formats-plugins, tesseract-ocr-spa, tesseract-ocr-eng, fonts-dejavu-core | fonts-noto-core")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
  "gnome-keyring | keepassxc | kwalletmanager, polkitd | policykit-1, dbus-user-session | dbus-x11, \
qt6-translations-l10n, xdg-utils")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include(CPack)
