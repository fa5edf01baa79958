// Copyright (C) 2019-2022 The mz_blockmodel project. All rights reserved.
// Copyright (C) 2023-YYYY The mz_blockmodel project. All rights reserved.
// -------------------------------------------------------------------------------
// This file holds confidential and proprietary information of the mz_blockmodel
// project. It is made available under the terms of the agreement under which you
// received it, and may be used, copied and distributed only within those terms.
//
// DISCLAIMER
// This file and the design information in it are provided "AS IS", with all
// faults. To the greatest extent the applicable law permits, the mz_blockmodel
// project and its contributors disclaim all warranties and conditions, express,
// implied or statutory, including but not limited to warranties of
// merchantability, of fitness for a particular purpose, of title and of
// non-infringement.
// The mz_blockmodel project and its contributors shall not be liable, whether
// in contract, in tort (negligence included) or under any other theory of
// liability, for any loss or damage of any kind arising out of or in connection
// with this file or its use, including direct, indirect, special, incidental or
// consequential loss or damage, loss of data, profits, goodwill or revenue, the
// cost of substitute goods or services, and any loss or damage suffered because
// of an action brought by a third party, even if such loss or damage was
// reasonably foreseeable or the project had been advised of its possibility.
// Where the applicable law does not allow the exclusion or limitation of
// liability, that liability is limited to the least extent the law permits.
// You are responsible for checking that the design behaves as you intend in
// your own system, under your own conditions of operation, before you rely on
// it. Nothing in this notice limits a right that you have under the applicable
// law and that cannot be limited by agreement.
//
// CRITICAL APPLICATIONS
// The design information in this file is not designed or intended to be
// fail-safe, nor for use in any application that requires fail-safe
// performance, such as life-support or safety devices or systems, Class III
// medical devices, nuclear facilities, or any other application in which the
// failure of the design could lead to death, personal injury or severe
// property or environmental damage (individually and collectively, "Critical
// Applications"). Use of the design in Critical Applications is at your sole
// risk, and you take on the whole responsibility for it, including for
// compliance with every law and regulation that applies to such use and for
// every safety warning, fail-safe and redundancy measure that it needs. No
// part of this notice is meant to invite or to allow such use.
// Contact the mz_blockmodel project before any such use is considered.
//
// THIS COPYRIGHT NOTICE AND DISCLAIMER MUST BE RETAINED AS PART OF THIS FILE AT
// ALL TIMES.
//
// DO NOT MODIFY THIS FILE.

// -------------- Begin Cut here for INTERFACE Include ------- // INCLUDE_TAG
`include "interfaces.svh" 
// -- INCLUDE_TAG_END ------ End INTERFACE Include ------------

// -------------- Begin Cut here for SV MODULE Definition ------- // MODULE_TAG
module axi_pair_sv_wrapper (
  input  aclk,
  aximm_v1_0.slave S0_AXI,
  aximm_v1_0.slave S1_AXI
);

assign S0_AXI.AWREADY = 0;
assign S0_AXI.WREADY = 0;
assign S0_AXI.BID = 0;
assign S0_AXI.BRESP = 0;
assign S0_AXI.BVALID = 0;
assign S0_AXI.RDATA = 0;

axi_pair axi_pair_i (
  .aclk(aclk),
  .s0_axi_awaddr(S0_AXI.AWADDR),
  .s0_axi_awvalid(S0_AXI.AWVALID),
  .s1_axi_awaddr(S1_AXI.AWADDR),
  .s1_axi_awvalid(S1_AXI.AWVALID)
);

endmodule
//-- MODULE_TAG_END ---------- End SV MODULE Definition --------------- 

//-------------- Begin Cut here for INTERFACE Template ------- // INTF_TAG 
   aximm_v1_0 #(.ADDR_WIDTH(40)) S0_AXI();
   aximm_v1_0 #(.ADDR_WIDTH(40)) S1_AXI();
//-- INTF_TAG_END -------------- End INTERFACE Template ------------------ 

//-------------- Begin Cut here for INSTANTIATION Template ------- // INST_TAG 
axi_pair_sv_wrapper inst (
  .aclk(aclk),
  .S0_AXI(S0_AXI.slave),
  .S1_AXI(S1_AXI.slave)
);
//-- INST_TAG_END ------ End INSTANTIATION Template ---------