#!/usr/bin/env bash
# Builds the help compiler (help/compiler/help_compiler.pp) with Debian's Free Pascal,
# once per compiler version and source, into the cache, and prints the program's path.
# The chm package's project reader is compiled from a copy in which the context map holds
# each topic's name inside the help file instead of its absolute path on this machine.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/wine-common.sh"

source_file=$repo_root/help/compiler/help_compiler.pp
fpc_version=$(fpc -iV)
chm_sources=/usr/share/fpcsrc/$fpc_version/packages/chm/src
key=$(cat "$source_file" "${BASH_SOURCE[0]}" | sha256sum | cut -c1-16)
dir=$cache_root/help-compiler-$fpc_version-$key
if [ ! -x "$dir/help_compiler" ]; then
  staging=$dir.tmp
  rm -rf "$staging"
  mkdir -p "$staging/units"
  cp "$source_file" "$staging/"
  cp "$chm_sources/chmfilewriter.pas" "$staging/"
  from='Writer.AddContext(nd.ContextNumber,IncludeTrailingPathDelimiter(FBasePath)+files[i]);'
  to="Writer.AddContext(nd.ContextNumber,'/'+files[i]);"
  grep -qF "$from" "$staging/chmfilewriter.pas" || {
    echo "build-help-compiler: the context map line of chmfilewriter.pas has changed" >&2
    exit 1
  }
  sed -i "s|$(printf '%s' "$from" | sed 's/[][\.*^$|]/\\&/g')|$to|" "$staging/chmfilewriter.pas"
  (cd "$staging" && fpc -O2 -Fu"$chm_sources" -FUunits help_compiler.pp >build.log 2>&1) || {
    cat "$staging/build.log" >&2
    exit 1
  }
  rm -rf "$dir"
  mv "$staging" "$dir"
fi
echo "$dir/help_compiler"
