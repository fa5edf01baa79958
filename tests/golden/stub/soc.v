// Copyright (C) 2019-2022 The mz_blockmodel project. All rights reserved.
// Copyright (C) 2023-YYYY The mz_blockmodel project. All rights reserved.
// -------------------------------------------------------------------------------

`timescale 1 ps / 1 ps

(* DESIGN_FLOW = "block_design" *)
module soc (
  sys_clk,
  sys_rstn,
  uart_tx,
  uart_rx,
  gpio_io
);

  (* OV_INTERFACE_IGNORE = "true" *)
  input sys_clk;
  (* OV_INTERFACE_IGNORE = "true" *)
  input sys_rstn;
  (* OV_INTERFACE_IGNORE = "true" *)
  output uart_tx;
  (* OV_INTERFACE_IGNORE = "true" *)
  input uart_rx;
  (* OV_INTERFACE_IGNORE = "true" *)
  inout [7:0]gpio_io;

  // stub module has no contents

endmodule
