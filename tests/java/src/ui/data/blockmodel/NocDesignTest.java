// NocDesignTest.java: the example NoC design read natively and walked from Java, against bmtool.
package ui.data.blockmodel;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNotEquals;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.HashMap;
import java.util.HashSet;
import java.util.List;
import java.util.Map;
import java.util.stream.Collectors;
import org.junit.jupiter.api.AfterAll;
import org.junit.jupiter.api.BeforeAll;
import org.junit.jupiter.api.Test;

class NocDesignTest {
  private static long top;
  private static DesignBlock design;
  private static final List<DesignBlock> blocks = new ArrayList<>();
  private static final Map<String, NocInterface> interfacesByPath = new HashMap<>();

  @BeforeAll
  static void read() {
    top = TestNatives.readTopBlock(System.getProperty("mz.examples") + "/noc.bm");
    assertNotEquals(0, top);
    design = DesignBlock.fromHandle(top);
    walk(design);
  }

  /** Depth first, parents before their sub-blocks, as bmtool lists them. */
  private static void walk(DesignBlock block) {
    blocks.add(block);
    block.getNocInterfaces(false).forEach(nocInterface -> interfacesByPath.put(nocInterface.getPath(), nocInterface));
    block.getSubBlocks().forEach(NocDesignTest::walk);
  }

  @AfterAll
  static void free() {
    TestNatives.deleteTopBlock(top);
  }

  @Test
  void treeAndNocCountsMatchBmtool() throws Exception {
    ProcessBuilder command = new ProcessBuilder(System.getProperty("mz.bmtool"), "info",
        System.getProperty("mz.examples") + "/noc.bm").redirectErrorStream(true);
    // A sanitizer runtime preloaded into the JVM is not the one bmtool carries.
    command.environment().remove("LD_PRELOAD");
    Process bmtool = command.start();
    String out = new String(bmtool.getInputStream().readAllBytes(), StandardCharsets.UTF_8);
    assertEquals(0, bmtool.waitFor(), out);
    List<List<String>> info = out.lines().filter(line -> !line.isBlank())
        .map(line -> Arrays.asList(line.trim().split("\\s+"))).collect(Collectors.toList());
    for (int i = 0; i < blocks.size(); ++i) {
      DesignBlock block = blocks.get(i);
      List<String> row = new ArrayList<>(List.of(block.getInstancePath(), block.getModuleName(), block.getModuleVlnv()));
      row.removeIf(String::isEmpty);
      assertEquals(info.get(i + 1), row);
    }
    Map<String, String> counts = new HashMap<>();
    info.stream().skip(blocks.size() + 1)
        .forEach(row -> counts.put(String.join(" ", row.subList(0, row.size() - 1)), row.get(row.size() - 1)));
    assertEquals(counts.get("blocks"), Integer.toString(blocks.size()));
    assertEquals(counts.get("noc interfaces"), Integer.toString(interfacesByPath.size()));
    int connections = blocks.stream().mapToInt(block -> block.getNocConnections(false).size()).sum();
    assertEquals(counts.get("noc connections"), Integer.toString(connections));
    assertEquals(connections, design.findNocConnections("", true, false).size());
  }

  @Test
  void treeAndConnectionLinksAgree() {
    assertNull(design.getParent());
    for (DesignBlock block : blocks) {
      if (block != design) {
        assertEquals(block, block.getParent().getSubBlock(block.getInstanceName()));
        assertEquals(block, design.findSubBlock(block.getInstancePath(), true));
      }
      assertEquals(block.hasNocConnections(false), !block.getNocConnections(false).isEmpty());
      for (NocConnection connection : block.getNocConnections(false)) {
        assertEquals(block, connection.getParent());
        assertEquals(connection, block.getNocConnection(connection.getName()));
        assertEquals(connection, design.findNocConnection(connection.getPath().substring(1), false));
        NocInterface source = interfacesByPath.get(connection.getSourcePath(true));
        NocInterface target = interfacesByPath.get(connection.getTargetPath(true));
        assertTrue(source.getTargetConnections().contains(connection), connection.getPath());
        assertTrue(target.getSourceConnections().contains(connection), connection.getPath());
        assertTrue(source.getTargetInterfaces().contains(target));
        assertTrue(target.getSourceInterfaces().contains(source));
        assertEquals(source.getNocMode().name().endsWith("NMU") && target.getNocMode().name().endsWith("NSU"),
            connection.isPrimary(), connection.getPath());
      }
    }
    assertEquals(new HashSet<>(blocks.subList(1, blocks.size())), new HashSet<>(design.findSubBlocks("*", true)));
    assertEquals(List.of(design.getSubBlock("accel")), new ArrayList<>(design.findSubBlocks("/acc*", false)));
    assertNull(design.getSubBlock("no_such_block"));
  }

  @Test
  void nocPathsOfTheDesign() {
    NocPathSet paths = NocPath.createNocPaths(design);
    List<String> names = new ArrayList<>();
    for (NocPath path : paths) {
      names.add(path.getName() + (path.isCompletePath() ? "" : " (incomplete)"));
      List<NocInterface> chain = new ArrayList<>(path.getNocInterfaces());
      assertEquals(path.getName(), chain.stream().map(NocInterface::getPath).collect(Collectors.joining("->")));
      assertEquals(chain.get(0), path.getSourceInterface());
      assertEquals(chain.get(chain.size() - 1), path.getTargetInterface());
      if (path.isCompletePath()) {
        assertEquals(NocInterface.NocMode.NMU, path.getNmuInterface().getNocMode());
        assertEquals(NocInterface.NocMode.NSU, path.getNsuInterface().getNocMode());
        assertTrue(path.getNocConnections().contains(path.getPrimaryConnection()));
        assertTrue(path.getPrimaryConnection().isPrimary());
      }
      path.getVNocInterfaces().forEach(virtual -> assertTrue(virtual.getNocMode().name().startsWith("V")));
    }
    assertEquals(List.of("/accel/core/M_AXI_nmu->/accel/vnmu0->/ddr/S_AXI_nsu", "/cpu/M_AXI_nmu->/ddr/S_AXI_nsu",
        "/cpu/M_AXI_nmu->/plram/S_AXI_nsu", "/dma/M_AXIS_nmu->/accel/vnsu0->/accel/core/S_AXIS_nsu",
        "/hbm/INI_nmu->/INI_nsu"), names);

    try (NocPathSet chosen = new NocPathSet()) {
      NocPath first = paths.iterator().next();
      assertEquals(List.of(true, false), List.of(chosen.add(first), chosen.add(first)));
      assertEquals(List.of(first), new ArrayList<>(chosen));
      assertEquals(List.of(true, false), List.of(chosen.remove(first), chosen.remove(first)));
      assertEquals(0, chosen.size());
    }
    assertEquals(0, NocPath.createNocPaths(null).size());
  }

  @Test
  void interfaceValues() {
    NocInterface nmu = interfacesByPath.get("/cpu/M_AXI_nmu");
    assertEquals(NocInterface.NocProtocol.AXIMM, nmu.getNocProtocol());
    assertEquals("NOC_NMU512_X0Y0", nmu.getLocation());
    assertEquals("best_effort", nmu.getParameter("READ_TRAFFIC_CLASS").getValue());
    assertNull(nmu.getParameter("NO_SUCH_PARAMETER"));
    NocInterface nsu = interfacesByPath.get("/ddr/S_AXI_nsu");
    assertEquals(12, nsu.getDestId());
    assertEquals(design.getSubBlock("ddr"), nsu.getParent());
    // Aperture sets cross as sets, and a null one raises before the call.
    assertEquals("0x0[2G]", TestNatives.aperturesText(nsu.getApertures().handle));
    blockmodeli.NocInterface_setApertures(nsu.handle, TestNatives.makeApertures("0x1000[4K] 0x0[1K]"));
    assertEquals("0x0[1K] 0x1000[4K]", TestNatives.aperturesText(nsu.getApertures().handle));
    assertEquals("HABMAddrApertures const & reference is null",
        assertThrows(NullPointerException.class, () -> nsu.setApertures(null)).getMessage());

    long parameters = blockmodeli.NocInterface_getParameters(nmu.handle);
    assertEquals(4, TestNatives.parameterCount(parameters));
    TestNatives.deleteParameters(parameters);
  }

  @Test
  void runTimeSwappedBlocks() {
    List<String> marked = new ArrayList<>();
    for (DesignBlock block : blocks) {
      DesignBlock ancestor = block.getRswAncestor();
      marked.add(block + (block.isBlockRsw() ? " rsw" : "") + (ancestor != null ? " below " + ancestor : "")
          + (block.isVisible() ? "" : " hidden") + (block.getTransparent() ? "" : " opaque"));
    }
    marked.removeIf(mark -> !mark.contains(" "));  // the unmarked
    assertEquals(List.of("/accel rsw", "/accel/core below /accel"), marked);
  }
}
