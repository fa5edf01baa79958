#!/usr/bin/env bash
# Installs the build tree into a fresh prefix and loads both shells from there, with no path into the
# build tree: the module and the package must find the libraries through their own run paths.
# Usage: installed_test.sh BUILD_DIR PREFIX PYTHON TCLSH PYTHON_DIR TCL_DIR (the last two under PREFIX)
set -euo pipefail
build=$1 prefix=$2 python=$3 tclsh=$4 python_dir=$5 tcl_dir=$6
rm -rf "$prefix"
cmake --install "$build" --prefix "$prefix" >/dev/null
design=$MZ_EXAMPLES_DIR/noc.bm
cd "$prefix"
PYTHONPATH="$prefix/$python_dir" "$python" -c "
import blockmodel
assert blockmodel.__file__.startswith('$prefix'), blockmodel.__file__
top = blockmodel.read('$design')
print('python:', top.module_name, len(top.find_noc_interfaces()))
"
echo "package require blockmodel
      set top [blockmodel::read_top_block $design]
      puts \"tcl: [blockmodel::get_property \$top module_name] [llength [blockmodel::find_noc_interfaces \$top]]\"
      if {![string match $prefix/* [lindex [package ifneeded blockmodel [package require blockmodel]] end-1]]} { exit 1 }" |
  TCLLIBPATH="$prefix/$(dirname "$tcl_dir")" "$tclsh"
