#!/usr/bin/env tclsh8.6
# A NoC flow through the Tcl package: read a design, look at it, add a NoC connection, check it and write
# the design and its constraint script.
# Usage: tclsh8.6 noc_flow.tcl ?DESIGN.bm? ?OUTPUT_DIR?   (defaults: examples/noc.bm and the current folder)
package require blockmodel

set design [expr {[llength $argv] > 0 ? [lindex $argv 0] : [file join [file dirname [info script]] noc.bm]}]
set out [expr {[llength $argv] > 1 ? [lindex $argv 1] : "."}]

set top [blockmodel::read_top_block $design]
puts "[blockmodel::get_property $top module_name]: [llength [blockmodel::find_sub_blocks $top]] sub-blocks,\
      [llength [blockmodel::find_noc_interfaces $top]] NoC interfaces"
foreach iface [blockmodel::find_noc_interfaces $top] {
    set p [blockmodel::report_properties $iface]
    puts [format "  %-28s %-5s %-6s %s" [dict get $p path] [dict get $p mode] [dict get $p protocol] [dict get $p category]]
}

# A second master on the CPU, linked to the DDR controller with the link's default traffic parameters.
set nmu [blockmodel::create_noc_interface [blockmodel::find_sub_block $top /cpu] M_AXI_dbg]
foreach {name value} {mode nmu protocol aximm category pl} {
    blockmodel::set_property $nmu $name $value
}
set link [blockmodel::connect_noc $top cpu/M_AXI_dbg ddr/S_AXI_nsu]
set parameters [blockmodel::get_parameters $link]
puts "added [blockmodel::get_property $link path]: primary=[blockmodel::get_property $link is_primary]"
puts "  read bandwidth [dict get $parameters READ_BANDWIDTH], write bandwidth [dict get $parameters WRITE_BANDWIDTH]"

set result [blockmodel::validate_all $top]
foreach finding [dict get $result findings] {
    puts "  [dict get $finding severity]: \[[dict get $finding id]\] [dict get $finding text]"
}
puts [expr {[dict get $result passed] ? "checks passed" : "checks found [llength [dict get $result findings]] findings"}]

blockmodel::write_top_block $top [file join $out noc_flow.bm]
blockmodel::write_constraints $top [file join $out noc_flow.tcl]
puts "wrote [file join $out noc_flow.bm] and [file join $out noc_flow.tcl]"
blockmodel::delete_top_block $top
