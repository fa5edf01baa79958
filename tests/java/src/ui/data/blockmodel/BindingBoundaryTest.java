// BindingBoundaryTest.java: what crosses the JNI boundary: exceptions, nulls, strings, enumeration values,
// containers and iterators, and value types.
package ui.data.blockmodel;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertNotEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;

import java.util.List;
import java.util.NoSuchElementException;
import java.util.function.LongConsumer;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.function.Executable;
import ui.frmwork.COutOfMemoryException;
import ui.frmwork.cmd.CommandFailedException;

class BindingBoundaryTest {
  private long top;
  private DesignBlock design;

  @BeforeEach
  void makeDesign() {
    top = TestNatives.createTopBlock("top");
    design = DesignBlock.fromHandle(top);
  }

  @AfterEach
  void freeDesign() {
    TestNatives.deleteTopBlock(top);
  }

  private static void assertThrowsWith(Class<? extends Throwable> type, String message, Executable call) {
    assertEquals(message, assertThrows(type, call).getMessage());
  }

  @Test
  void everyNativeExceptionBecomesAJavaException() {
    assertThrowsWith(CommandFailedException.class, "disk full on /tmp", () -> TestNatives.throwKind(0, "disk full on /tmp"));
    assertThrowsWith(CommandFailedException.class, "", () -> TestNatives.throwKind(1, "unused"));
    assertThrowsWith(COutOfMemoryException.class, "Out of memory", () -> TestNatives.throwKind(2, "unused"));
    assertThrowsWith(CommandFailedException.class, "bad range \u00b5", () -> TestNatives.throwKind(3, "bad range \u00b5"));
    assertThrowsWith(CommandFailedException.class, "Unknown exception occurred", () -> TestNatives.throwKind(4, "unused"));
  }

  @Test
  void nullArgumentsRaiseBeforeTheCall() {
    int calls = TestNatives.echoCalls();
    assertThrowsWith(NullPointerException.class, "null std::string", () -> TestNatives.echo(null));
    assertEquals(calls, TestNatives.echoCalls());
    assertThrowsWith(NullPointerException.class, "null std::string", () -> design.getSubBlock(null));
    assertThrowsWith(NullPointerException.class, "null std::string", () -> NocInterface.encodeNocMode(null));
  }

  @Test
  void stringsCrossAsUnicode() {
    String module = "Gr\u00fc\u00dfe_\u65e5\u672c_\ud83d\ude00";
    long sub = TestNatives.createSubBlock(top, "u\ud83d\ude00", module);
    assertEquals(module, design.getSubBlock("u\ud83d\ude00").getModuleName());
    assertEquals("/u\ud83d\ude00", DesignBlock.fromHandle(sub).getInstancePath());
    // Real UTF-8 on the native side, not the JVM's modified form.
    assertEquals("c3 a9 f0 9f 98 80 0 ", TestNatives.utf8Hex("\u00e9\ud83d\ude00\u0000"));
    assertEquals("\ufffdx\ufffd", TestNatives.echo("\ud800x\udc00"));
  }

  @Test
  void enumerationsCrossAsIntegers() {
    assertEquals(NocInterface.NocMode.VNSU, NocInterface.encodeNocMode("VNSU"));
    assertEquals(blockmodeli.get_NocInterface_NocMode_UNKNOWN(), blockmodeli.NocInterface_encodeNocMode("nmu "));
    assertEquals(NocInterface.NocProtocol.UNKNOWN, NocInterface.encodeNocProtocol("axi"));
    assertEquals("nsu", NocInterface.decodeNocMode(NocInterface.NocMode.NSU));
    assertEquals("aximm", NocInterface.decodeNocProtocol(NocInterface.NocProtocol.AXIMM));
    for (int outside : new int[] {-1, 5, Integer.MAX_VALUE}) {
      assertEquals("", blockmodeli.NocInterface_decodeNocMode(outside));
      assertEquals("", blockmodeli.NocInterface_decodeNocProtocol(outside));
    }
  }

  @Test
  void containersAndIterators() {
    long a = TestNatives.createSubBlock(top, "a", "m");
    long b = TestNatives.createSubBlock(top, "b", "m");
    DesignBlockVector vector = new DesignBlockVector();
    assertThrows(NoSuchElementException.class, vector.iterator()::next);
    vector.addAll(List.of(DesignBlock.fromHandle(b), DesignBlock.fromHandle(a), DesignBlock.fromHandle(b)));
    assertEquals(List.of("b", "a", "b"), vector.stream().map(DesignBlock::getInstanceName).toList());
    vector.clear();
    assertEquals(0, vector.size());
    vector.close();
    assertThrows(IllegalStateException.class, vector::size);
    long raw = blockmodeli.new_DesignBlockVector();
    long iter = blockmodeli.DesignBlockVector_createIter(raw);
    assertFalse(blockmodeli.DesignBlockIter_hasNext(iter));
    blockmodeli.delete_DesignBlockIter(iter);
    blockmodeli.delete_DesignBlockVector(raw);
    List.<LongConsumer>of(blockmodeli::delete_DesignBlockVector, blockmodeli::delete_NocConnectionVector,
        blockmodeli::delete_NocInterfaceVector, blockmodeli::delete_NocPathVector, blockmodeli::delete_NocPathSet,
        blockmodeli::delete_DesignBlockIter, blockmodeli::delete_NocConnectionIter,
        blockmodeli::delete_NocInterfaceIter, blockmodeli::delete_NocPathIter).forEach(delete -> delete.accept(0));
  }

  @Test
  void valueTypes() {
    HABMAddrAperture aperture = new HABMAddrAperture(TestNatives.makeAperture("0x1000[4K]"));
    assertEquals("0x0000_1000[4K]", aperture.getBaseAbrvString(32));
    assertEquals("0x1000:0x1FFF", aperture.getBaseHighString(0));
    assertEquals("0x1000", aperture.getRange().toString());
    assertEquals("0x1FFF", aperture.getHighAddress().toString());
    assertNotEquals(aperture.getRange().handle, aperture.getRange().handle);
    assertThrows(IllegalArgumentException.class, () -> aperture.getBaseAbrvString(-1));
  }
}
