# Writes Version.cpp: which release this is, and of which commit and day. Run at each build; the file changes only with the commit.
# A source archive has no repository: there git has put commit and day into packaging/commit.txt when it made the archive.
#   cmake -DVERSION=1.4 -DSOURCE=DIR -DOUT=FILE -P WriteVersion.cmake
set(commit "")
if(EXISTS ${SOURCE}/.git)
  execute_process(COMMAND git -C ${SOURCE} log -1 --format=%h,\ %cs OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
else()
  file(STRINGS ${SOURCE}/packaging/commit.txt commit LIMIT_COUNT 1)
  if(commit MATCHES "Format")
    set(commit "")
  endif()
endif()
if(commit)
  set(commit " (${commit})")
endif()
file(WRITE ${OUT}.new "#include \"platform/runtime/Version.h\"

namespace tallymar {

std::string_view ProgramVersion() {
    return \"${VERSION}${commit}\";
}

}  // namespace tallymar
")
file(COPY_FILE ${OUT}.new ${OUT} ONLY_IF_DIFFERENT)
file(REMOVE ${OUT}.new)
