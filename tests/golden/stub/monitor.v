// Copyright (C) 2019-2022 The mz_blockmodel project. All rights reserved.
// Copyright (C) 2023-YYYY The mz_blockmodel project. All rights reserved.
// -------------------------------------------------------------------------------

`timescale 1 ps / 1 ps


module bus_probe (
  clk,
  mon_tdata,
  mon_tuser,
  mon_tvalid,
  mon_tready,
  spy_awaddr,
  spy_awvalid,
  sys_data,
  loose_tdata
);

  (* OV_INTERFACE_IGNORE = "true" *)
  input clk;
  (* OV_INTERFACE_INFO = "orvane:interface:axis:1.0 MON TDATA" *)
  (* OV_INTERFACE_MODE = "monitor slave MON" *)
  (* OV_INTERFACE_PARAMETER = "ORV_INTERFACENAME MON, HAS_TREADY 1" *)
  input [127:0]mon_tdata;
  (* OV_INTERFACE_INFO = "orvane:interface:axis:1.0 MON TUSER" *)
  input [7:0]mon_tuser;
  (* OV_INTERFACE_INFO = "orvane:interface:axis:1.0 MON TVALID" *)
  input mon_tvalid;
  (* OV_INTERFACE_INFO = "orvane:interface:axis:1.0 MON TREADY" *)
  input mon_tready;
  (* OV_INTERFACE_INFO = "orvane:interface:aximm:1.0 SPY AWADDR" *)
  (* OV_INTERFACE_MODE = "monitor master SPY" *)
  input [47:0]spy_awaddr;
  (* OV_INTERFACE_INFO = "orvane:interface:aximm:1.0 SPY AWVALID" *)
  input spy_awvalid;
  (* OV_INTERFACE_INFO = "acme:user:status:1.0 SYS DATA" *)
  (* OV_INTERFACE_MODE = "system SYS" *)
  output [31:0]sys_data;
  (* OV_INTERFACE_INFO = "orvane:interface:axis:1.0 LOOSE TDATA" *)
  (* OV_INTERFACE_MODE = "" *)
  input [15:0]loose_tdata;

  // stub module has no contents

endmodule
