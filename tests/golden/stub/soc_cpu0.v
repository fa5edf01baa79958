// Copyright (C) 2019-2022 The mz_blockmodel project. All rights reserved.
// Copyright (C) 2023-YYYY The mz_blockmodel project. All rights reserved.
// -------------------------------------------------------------------------------

`timescale 1 ps / 1 ps


module riscv_core #(
  parameter XLEN = 64,
  parameter HART_ID = 0
) (
  clk,
  resetn,
  irq,
  m_axi_awaddr,
  m_axi_wdata
);

  (* OV_INTERFACE_INFO = "orvane:signal:clock:1.0 CLK CLK" *)
  (* OV_INTERFACE_MODE = "slave CLK" *)
  (* OV_INTERFACE_PARAMETER = "ORV_INTERFACENAME CLK, FREQ_HZ 250000000" *)
  input clk;
  (* OV_INTERFACE_INFO = "orvane:signal:reset:1.0 RST RST" *)
  (* OV_INTERFACE_MODE = "slave RST" *)
  (* OV_INTERFACE_PARAMETER = "ORV_INTERFACENAME RST, POLARITY ACTIVE_LOW" *)
  input resetn;
  (* OV_INTERFACE_IGNORE = "true" *)
  input irq;
  (* OV_INTERFACE_INFO = "orvane:interface:aximm:1.0 M_AXI AWADDR" *)
  (* OV_INTERFACE_MODE = "master M_AXI" *)
  output [63:0]m_axi_awaddr;
  (* OV_INTERFACE_INFO = "orvane:interface:aximm:1.0 M_AXI WDATA" *)
  output [127:0]m_axi_wdata;

  // stub module has no contents

endmodule
