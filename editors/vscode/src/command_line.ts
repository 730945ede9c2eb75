/** What the user states about files that leave it open; "" and null mean no statement. */
export interface FileSettings {
  readonly width: number | null;
  readonly endian: string;
  readonly addressUnit: string;
}

export interface ServerSettings extends FileSettings {
  /** Programs whose interpretation is compared; if empty, the tool chooses. */
  readonly consumers: readonly string[];
}

/** A format that the tool writes. */
export interface OutputFormat {
  readonly name: string;
  readonly title: string;
  readonly extensions: readonly string[];
}

function fileOptions(settings: FileSettings): string[] {
  return [
    ...(settings.width === null ? [] : ["--width", settings.width.toString()]),
    ...(settings.endian === "" ? [] : ["--endian", settings.endian]),
    ...(settings.addressUnit === "" ? [] : ["--address-unit", settings.addressUnit]),
  ];
}

/** The arguments that start the language server. */
export function serverArguments(settings: ServerSettings): string[] {
  const readers = settings.consumers.length === 0 ? [] : ["--for", settings.consumers.join(",")];
  return ["lsp", ...fileOptions(settings), ...readers];
}

/** The arguments that convert one file to another. The paths must be absolute, so that neither begins with "-". */
export function convertArguments(settings: FileSettings, format: string, from: string, to: string): string[] {
  return ["convert", ...fileOptions(settings), "--to", format, from, to];
}

/** The arguments that draw a file as SVG. */
export function plotArguments(settings: FileSettings, from: string, to: string): string[] {
  return ["plot", ...fileOptions(settings), "--output", to, from];
}

function isRecord(value: unknown): value is Record<string, unknown> {
  return typeof value === "object" && value !== null;
}

function isTextList(value: unknown): value is string[] {
  return Array.isArray(value) && value.every((item) => typeof item === "string");
}

/**
 * The formats that the tool writes.
 *
 * @param json the output of "kvrmem formats --json"
 * @throws Error if it is anything else
 */
export function outputFormats(json: string): OutputFormat[] {
  const answer: unknown = JSON.parse(json);
  if (!isRecord(answer) || !Array.isArray(answer["formats"])) {
    throw new Error("kvrmem formats --json lists no formats");
  }
  return answer["formats"].filter(isRecord).flatMap(({ name, title, extensions, uses }) => {
    if (typeof name !== "string" || typeof title !== "string" || !isTextList(extensions) || !isTextList(uses)) {
      throw new Error("kvrmem formats --json describes a format in another way");
    }
    return uses.includes("write") ? [{ name, title, extensions }] : [];
  });
}
