# Copyright (C) 2019-2022 The mz_blockmodel project. All rights reserved.
# Copyright (C) 2023-YYYY The mz_blockmodel project. All rights reserved.
# -------------------------------------------------------------------------------

# constrain noc interface(s)
set INI_nsu [create_noc_interface -mode nsu -type aximm INI_nsu]
set cpu_M_AXI_nmu [create_noc_interface -mode nmu -type aximm cpu/M_AXI_nmu]
set_property LOCATION NOC_NMU512_X0Y0 ${cpu_M_AXI_nmu}
set_property -dict [list READ_TRAFFIC_CLASS {best_effort} WRITE_TRAFFIC_CLASS {low_latency}] ${cpu_M_AXI_nmu}
set ddr_S_AXI_nsu [create_noc_interface -mode nsu -type aximm ddr/S_AXI_nsu]
set_property APERTURES [list {0x0 2G}] ${ddr_S_AXI_nsu}
set_property LOCATION NOC_NSU512_X1Y0 ${ddr_S_AXI_nsu}
set plram_S_AXI_nsu [get_noc_interfaces -mode nsu -type aximm plram/S_AXI_nsu]
set_property APERTURES [list {0x201_0000_0000 1M}] ${plram_S_AXI_nsu}
set_property LOCATION NOC_NSU512_X2Y0 ${plram_S_AXI_nsu}
set accel_vnsu0 [create_noc_interface -mode vnsu -type axis accel/vnsu0]
set accel_core_S_AXIS_nsu [create_noc_interface -mode nsu -type axis accel/core/S_AXIS_nsu]
set_property TDEST_ID 0x2:0x3 ${accel_core_S_AXIS_nsu}

# constrain noc connection(s)
set noc_connection_0 [create_noc_connection -source [get_noc_interfaces cpu/M_AXI_nmu] -target [get_noc_interfaces ddr/S_AXI_nsu] noc_connection_0]
set_property REMAPS [list {0x4000_0000 0x0 1G}] ${noc_connection_0}
set_property -dict [list READ_BANDWIDTH {1200} WRITE_BANDWIDTH {800}] ${noc_connection_0}
set noc_connection_2 [create_noc_connection -source [get_noc_interfaces dma/M_AXIS_nmu] -target [get_noc_interfaces accel/vnsu0] noc_connection_2]
set noc_connection_4 [create_noc_connection -source [get_noc_interfaces cpu/M_AXI_nmu] -target [get_noc_interfaces plram/S_AXI_nsu] noc_connection_4]
set_property -dict [list READ_LATENCY {120} SEPARATE_ROUTING_GROUP {pl ram}] ${noc_connection_4}
set accel_noc_connection_1 [create_noc_connection -source [get_noc_interfaces accel/vnsu0] -target [get_noc_interfaces accel/core/S_AXIS_nsu] accel/noc_connection_1]
