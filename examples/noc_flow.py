#!/usr/bin/env python3
"""A NoC flow through the Python module: read a design, look at it, add a NoC connection, check it and
write the design and its constraint script.

Usage: noc_flow.py [DESIGN.bm] [OUTPUT_DIR]   (defaults: examples/noc.bm and the current folder)
"""
import os
import sys

import blockmodel

here = os.path.dirname(os.path.abspath(__file__))
design = sys.argv[1] if len(sys.argv) > 1 else os.path.join(here, "noc.bm")
out = sys.argv[2] if len(sys.argv) > 2 else "."

top = blockmodel.read(design)
print(f"{top.module_name}: {len(top.find_sub_blocks())} sub-blocks, {len(top.find_noc_interfaces())} NoC interfaces")
for iface in top.find_noc_interfaces():
    print(f"  {iface.path:28} {iface.mode:5} {iface.protocol:6} {iface.category}")

# A second master on the CPU, linked to the DDR controller with the link's default traffic parameters.
cpu = top.find_sub_block("/cpu")
nmu = cpu.create_noc_interface("M_AXI_dbg")
nmu.mode, nmu.protocol, nmu.category = "nmu", "aximm", "pl"
link = top.connect_noc("cpu/M_AXI_dbg", "ddr/S_AXI_nsu")
print(f"added {link.path}: {link.source.path} -> {link.target.path}, primary={link.is_primary}")
print(f"  read bandwidth {link.parameters.get('READ_BANDWIDTH')}, write bandwidth {link.parameters.get('WRITE_BANDWIDTH')}")

passed, findings = top.validate_all()
for finding in findings:
    print(f"  {finding}")
print("checks passed" if passed else f"checks found {len(findings)} findings")

blockmodel.write(top, os.path.join(out, "noc_flow.bm"))
top.write_constraints(os.path.join(out, "noc_flow.tcl"))
print(f"wrote {os.path.join(out, 'noc_flow.bm')} and {os.path.join(out, 'noc_flow.tcl')}")
