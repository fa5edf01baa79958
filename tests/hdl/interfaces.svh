// interfaces.svh: the SystemVerilog interfaces that generated wrappers include, for checking them with
// real HDL tools. The widths follow the parameters that the wrappers' instance hints set.
`ifndef MZ_TEST_INTERFACES_SVH
`define MZ_TEST_INTERFACES_SVH

interface aximm_v1_0 #(
  parameter int DATA_WIDTH = 32,
  parameter int ADDR_WIDTH = 32,
  parameter int ID_WIDTH = 1,
  parameter int AWUSER_WIDTH = 1,
  parameter int ARUSER_WIDTH = 1,
  parameter int WUSER_WIDTH = 1,
  parameter int RUSER_WIDTH = 1,
  parameter int BUSER_WIDTH = 1
) ();
  logic [ID_WIDTH-1:0] AWID;
  logic [ADDR_WIDTH-1:0] AWADDR;
  logic [7:0] AWLEN;
  logic [2:0] AWSIZE;
  logic [1:0] AWBURST;
  logic AWLOCK;
  logic [3:0] AWCACHE;
  logic [2:0] AWPROT;
  logic [3:0] AWQOS;
  logic [3:0] AWREGION;
  logic [AWUSER_WIDTH-1:0] AWUSER;
  logic AWVALID;
  logic AWREADY;
  logic [DATA_WIDTH-1:0] WDATA;
  logic [DATA_WIDTH/8-1:0] WSTRB;
  logic WLAST;
  logic [WUSER_WIDTH-1:0] WUSER;
  logic WVALID;
  logic WREADY;
  logic [ID_WIDTH-1:0] BID;
  logic [1:0] BRESP;
  logic [BUSER_WIDTH-1:0] BUSER;
  logic BVALID;
  logic BREADY;
  logic [ID_WIDTH-1:0] ARID;
  logic [ADDR_WIDTH-1:0] ARADDR;
  logic [7:0] ARLEN;
  logic [2:0] ARSIZE;
  logic [1:0] ARBURST;
  logic ARLOCK;
  logic [3:0] ARCACHE;
  logic [2:0] ARPROT;
  logic [3:0] ARQOS;
  logic [3:0] ARREGION;
  logic [ARUSER_WIDTH-1:0] ARUSER;
  logic ARVALID;
  logic ARREADY;
  logic [ID_WIDTH-1:0] RID;
  logic [DATA_WIDTH-1:0] RDATA;
  logic [1:0] RRESP;
  logic RLAST;
  logic [RUSER_WIDTH-1:0] RUSER;
  logic RVALID;
  logic RREADY;

  modport master(
    output AWID, AWADDR, AWLEN, AWSIZE, AWBURST, AWLOCK, AWCACHE, AWPROT, AWQOS, AWREGION, AWUSER, AWVALID,
    input AWREADY,
    output WDATA, WSTRB, WLAST, WUSER, WVALID,
    input WREADY,
    input BID, BRESP, BUSER, BVALID,
    output BREADY,
    output ARID, ARADDR, ARLEN, ARSIZE, ARBURST, ARLOCK, ARCACHE, ARPROT, ARQOS, ARREGION, ARUSER, ARVALID,
    input ARREADY,
    input RID, RDATA, RRESP, RLAST, RUSER, RVALID,
    output RREADY
  );
  modport slave(
    input AWID, AWADDR, AWLEN, AWSIZE, AWBURST, AWLOCK, AWCACHE, AWPROT, AWQOS, AWREGION, AWUSER, AWVALID,
    output AWREADY,
    input WDATA, WSTRB, WLAST, WUSER, WVALID,
    output WREADY,
    output BID, BRESP, BUSER, BVALID,
    input BREADY,
    input ARID, ARADDR, ARLEN, ARSIZE, ARBURST, ARLOCK, ARCACHE, ARPROT, ARQOS, ARREGION, ARUSER, ARVALID,
    output ARREADY,
    output RID, RDATA, RRESP, RLAST, RUSER, RVALID,
    input RREADY
  );
endinterface

interface axis_v1_0 #(
  parameter int TDATA_NUM_BYTES = 1,
  parameter int TUSER_WIDTH = 1,
  parameter int TID_WIDTH = 1,
  parameter int TDEST_WIDTH = 1
) ();
  logic [8*TDATA_NUM_BYTES-1:0] TDATA;
  logic [TDATA_NUM_BYTES-1:0] TSTRB;
  logic [TDATA_NUM_BYTES-1:0] TKEEP;
  logic TLAST;
  logic [TID_WIDTH-1:0] TID;
  logic [TDEST_WIDTH-1:0] TDEST;
  logic [TUSER_WIDTH-1:0] TUSER;
  logic TVALID;
  logic TREADY;

  modport master(output TDATA, TSTRB, TKEEP, TLAST, TID, TDEST, TUSER, TVALID, input TREADY);
  modport slave(input TDATA, TSTRB, TKEEP, TLAST, TID, TDEST, TUSER, TVALID, output TREADY);
endinterface

`endif
