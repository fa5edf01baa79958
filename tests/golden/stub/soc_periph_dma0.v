// Copyright (C) 2019-2022 The mz_blockmodel project. All rights reserved.
// Copyright (C) 2023-YYYY The mz_blockmodel project. All rights reserved.
// -------------------------------------------------------------------------------

`timescale 1 ps / 1 ps


module axis_dma (
  s_axis_tdata,
  s_axis_tvalid,
  m_axis_tdata,
  m_axis_tvalid,
  mon_tdata,
  m_axi_awaddr,
  aclk,
  aresetn,
  test_mode
);

  (* OV_INTERFACE_INFO = "orvane:interface:axis:1.0 S_AXIS TDATA" *)
  (* OV_INTERFACE_MODE = "slave S_AXIS" *)
  (* OV_INTERFACE_PARAMETER = "ORV_INTERFACENAME S_AXIS, TDATA_NUM_BYTES 8" *)
  input [63:0]s_axis_tdata;
  (* OV_INTERFACE_INFO = "orvane:interface:axis:1.0 S_AXIS TVALID" *)
  input s_axis_tvalid;
  (* OV_INTERFACE_INFO = "orvane:interface:axis:1.0 M_AXIS TDATA" *)
  (* OV_INTERFACE_MODE = "master M_AXIS" *)
  output [63:0]m_axis_tdata;
  (* OV_INTERFACE_INFO = "orvane:interface:axis:1.0 M_AXIS TVALID" *)
  output m_axis_tvalid;
  (* OV_INTERFACE_INFO = "orvane:interface:axis:1.0 MON TDATA" *)
  (* OV_INTERFACE_MODE = "monitor slave MON" *)
  input [63:0]mon_tdata;
  (* OV_INTERFACE_INFO = "orvane:interface:aximm:1.0 M_AXI AWADDR" *)
  (* OV_INTERFACE_MODE = "master M_AXI" *)
  output [31:0]m_axi_awaddr;
  (* OV_INTERFACE_INFO = "orvane:signal:clock:1.0 ACLK CLK" *)
  (* OV_INTERFACE_MODE = "slave ACLK" *)
  (* OV_INTERFACE_PARAMETER = "ORV_INTERFACENAME ACLK, FREQ_HZ 250000000" *)
  input aclk;
  (* OV_INTERFACE_INFO = "orvane:signal:reset:1.0 ARESETN RST" *)
  (* OV_INTERFACE_MODE = "slave ARESETN" *)
  (* OV_INTERFACE_PARAMETER = "ORV_INTERFACENAME ARESETN, POLARITY ACTIVE_LOW" *)
  input aresetn;
  (* OV_INTERFACE_IGNORE = "true" *)
  input test_mode;

  // stub module has no contents

endmodule
