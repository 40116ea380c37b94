# Completion of hlxctl and hlx-simulator for bash: the programs themselves know what may stand where.
_hlx() {
  local words current prefix line
  local -a found=()
  read -ra words <<<"${COMP_LINE:0:COMP_POINT}"
  [[ ${COMP_LINE:0:COMP_POINT} != *[[:space:]] ]] || words+=("")
  current=${words[-1]}
  # bash replaces only what follows the last of these.
  prefix=${current%"${current##*[=:]}"}
  COMPREPLY=()
  mapfile -t found < <("${words[0]}" complete -- "${words[@]:1}" 2>/dev/null)
  for line in "${found[@]}"; do
    if [[ $line == $'\tfiles' ]]; then
      mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen -f -- "$current")
      compopt -o filenames
      continue
    fi
    line=${line%%$'\t'*}
    COMPREPLY+=("${line#"$prefix"}")
  done
  [[ ${#COMPREPLY[@]} -ne 1 || ${COMPREPLY[0]} != *= ]] || compopt -o nospace
}
complete -F _hlx hlxctl hlx-simulator
