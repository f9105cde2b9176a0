# Writes one checksum over names and texts of all scripts that a hospital file depends on. The
# demo hospital's are left out: they do not touch a file that exists.
file(GLOB_RECURSE scripts RELATIVE ${SERVER} ${SERVER}/schema/*.sql ${SERVER}/migrations/*.sql
  ${SERVER}/procedures/*.sql)
list(SORT scripts)
set(lines "")
foreach(script IN LISTS scripts)
  file(SHA256 ${SERVER}/${script} sum)
  string(APPEND lines "${script} ${sum}\n")
endforeach()
string(SHA256 all "${lines}")
file(WRITE ${OUTPUT} "#include \"deploy/ScriptSet.h\"

namespace deploy {

const char* const kOwnScriptsChecksum = \"${all}\";

}  // namespace deploy
")
