// Copyright (C) 2019-2022 The mz_blockmodel project. All rights reserved.
// Copyright (C) 2023-YYYY The mz_blockmodel project. All rights reserved.
// -------------------------------------------------------------------------------

`timescale 1 ps / 1 ps


module axi_dev #(
  parameter C_S_AXI_DATA_WIDTH = 64
) (
  aclk,
  aresetn,
  s_axi_awid,
  s_axi_awaddr,
  s_axi_awvalid,
  s_axi_awready,
  s_axi_wdata,
  s_axi_wvalid,
  s_axi_wready,
  s_axi_bid,
  m_axis_tdata,
  m_axis_tvalid,
  m_axis_tready,
  irq
);

  (* OV_INTERFACE_INFO = "orvane:signal:clock:1.0 ACLK CLK" *)
  (* OV_INTERFACE_MODE = "slave ACLK" *)
  (* OV_INTERFACE_PARAMETER = "ORV_INTERFACENAME ACLK, ASSOCIATED_BUSIF S_AXI:M_AXIS" *)
  input aclk;
  (* OV_INTERFACE_INFO = "orvane:signal:reset:1.0 ARESETN RST" *)
  (* OV_INTERFACE_MODE = "slave ARESETN" *)
  input aresetn;
  (* OV_INTERFACE_INFO = "orvane:interface:aximm:1.0 S_AXI AWID" *)
  (* OV_INTERFACE_MODE = "slave S_AXI" *)
  (* OV_INTERFACE_PARAMETER = "ORV_INTERFACENAME S_AXI, PROTOCOL AXI4, FREQ_HZ 100000000" *)
  input [3:0]s_axi_awid;
  (* OV_INTERFACE_INFO = "orvane:interface:aximm:1.0 S_AXI AWADDR" *)
  input [31:0]s_axi_awaddr;
  (* OV_INTERFACE_INFO = "orvane:interface:aximm:1.0 S_AXI AWVALID" *)
  input s_axi_awvalid;
  (* OV_INTERFACE_INFO = "orvane:interface:aximm:1.0 S_AXI AWREADY" *)
  output s_axi_awready;
  (* OV_INTERFACE_INFO = "orvane:interface:aximm:1.0 S_AXI WDATA" *)
  input [63:0]s_axi_wdata;
  (* OV_INTERFACE_INFO = "orvane:interface:aximm:1.0 S_AXI WVALID" *)
  input s_axi_wvalid;
  (* OV_INTERFACE_INFO = "orvane:interface:aximm:1.0 S_AXI WREADY" *)
  output s_axi_wready;
  (* OV_INTERFACE_INFO = "orvane:interface:aximm:1.0 S_AXI BID" *)
  output [3:0]s_axi_bid;
  (* OV_INTERFACE_INFO = "orvane:interface:axis:1.0 M_AXIS TDATA" *)
  (* OV_INTERFACE_MODE = "master M_AXIS" *)
  output [31:0]m_axis_tdata;
  (* OV_INTERFACE_INFO = "orvane:interface:axis:1.0 M_AXIS TVALID" *)
  output m_axis_tvalid;
  (* OV_INTERFACE_INFO = "orvane:interface:axis:1.0 M_AXIS TREADY" *)
  input m_axis_tready;
  (* OV_INTERFACE_IGNORE = "true" *)
  output irq;

  // stub module has no contents

endmodule
