// Copyright (C) 2019-2022 The mz_blockmodel project. All rights reserved.
// Copyright (C) 2023-YYYY The mz_blockmodel project. All rights reserved.
// -------------------------------------------------------------------------------

`timescale 1 ps / 1 ps

(* KEEP_HIERARCHY = "yes" *)
(* DONT_TOUCH = "true" *)
module plain_io (
  clk,
  d,
  q,
  io,
  le,
  done
);

  (* OV_INTERFACE_IGNORE = "true" *)
  input clk;
  (* OV_INTERFACE_IGNORE = "true" *)
  input [3:0]d;
  (* OV_INTERFACE_IGNORE = "true" *)
  output [7:0]q;
  (* OV_INTERFACE_IGNORE = "true" *)
  inout [1:0]io;
  (* OV_INTERFACE_IGNORE = "true" *)
  input [0:5]le;
  (* OV_INTERFACE_IGNORE = "true" *)
  output done;

  // stub module has no contents

endmodule
