import { execFile } from "node:child_process";

/** A failed run of the tool. The message is the text that the tool printed to standard error. */
export class ToolError extends Error {
  constructor(
    message: string,
    /** True if the program could not be started. */
    readonly isMissing: boolean,
  ) {
    super(message);
  }
}

/**
 * Runs the tool in FOLDER and waits for its end.
 *
 * @returns the text that it printed to standard output
 * @throws ToolError if it cannot be started or its exit code is not 0
 */
export function runTool(path: string, options: readonly string[], folder: string): Promise<string> {
  return new Promise((resolve, reject) => {
    execFile(path, options, { cwd: folder, maxBuffer: 64 * 1024 * 1024 }, (error, output, errors) => {
      if (error === null) {
        resolve(output);
        return;
      }
      const isMissing = error.code === "ENOENT" || error.code === "EACCES";
      const message = isMissing ? `${path} cannot be started` : errors.trim() || error.message;
      reject(new ToolError(message, isMissing));
    });
  });
}
