import assert from "node:assert/strict";
import { tmpdir } from "node:os";
import { describe, test } from "node:test";

import { runTool, ToolError } from "../../src/tool";

/** Runs node in place of the tool. */
function runScript(script: string): Promise<string> {
  return runTool(process.execPath, ["-e", script], tmpdir());
}

describe("the tool", () => {
  test("gives its standard output", async () => {
    assert.equal(await runScript("console.log('4 words')"), "4 words\n");
  });

  test("fails with what it prints to standard error", async () => {
    await assert.rejects(runScript("console.error('too wide'); process.exit(2)"), new ToolError("too wide", false));
  });

  test("fails with its command line where it prints nothing", async () => {
    await assert.rejects(runScript("process.exit(5)"), /Command failed/);
  });

  test("is missing where it cannot be started", async () => {
    await assert.rejects(
      runTool("/nowhere/kvrmem", [], tmpdir()),
      new ToolError("/nowhere/kvrmem cannot be started", true),
    );
  });
});
