// Copyright (C) 2019-2022 The mz_blockmodel project. All rights reserved.
// Copyright (C) 2023-YYYY The mz_blockmodel project. All rights reserved.
// -------------------------------------------------------------------------------

`timescale 1 ps / 1 ps


module fifo #(
  parameter WIDTH = 16,
  parameter DEPTH = 512,
  parameter INIT = 8'hA5
) (
  clk,
  din,
  dout,
  full
);

  (* OV_INTERFACE_IGNORE = "true" *)
  input clk;
  (* OV_INTERFACE_IGNORE = "true" *)
  input [15:0]din;
  (* OV_INTERFACE_IGNORE = "true" *)
  output [15:0]dout;
  (* OV_INTERFACE_IGNORE = "true" *)
  output full;

  // stub module has no contents

endmodule
