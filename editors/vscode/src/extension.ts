import { mkdtemp, readFile, rm } from "node:fs/promises";
import { tmpdir } from "node:os";
import { basename, dirname, extname, join } from "node:path";
import * as vscode from "vscode";
import { LanguageClient } from "vscode-languageclient/node";

import {
  convertArguments,
  outputFormats,
  plotArguments,
  serverArguments,
  type OutputFormat,
  type ServerSettings,
} from "./command_line";
import { languageOf } from "./language";
import { picturePage } from "./picture";
import { runTool, ToolError } from "./tool";

/** The number of lines that determine the language of a file. */
const headLines = 200;

let client: LanguageClient | undefined;
/** Settles after the last start or stop of the server, which run one at a time. */
let lastChange: Promise<void> = Promise.resolve();
/** Files whose language was determined: a later choice of the user is kept. */
const judged = new Set<string>();

function toolPath(): string {
  return vscode.workspace.getConfiguration("kvrmem").get("path", "kvrmem");
}

function settings(): ServerSettings {
  const values = vscode.workspace.getConfiguration("kvrmem");
  return {
    width: values.get<number | null>("width", null),
    endian: values.get("endian", ""),
    addressUnit: values.get("addressUnit", ""),
    consumers: values.get<string[]>("consumers", []),
  };
}

function ourLanguages(context: vscode.ExtensionContext): string[] {
  const manifest = context.extension.packageJSON as { contributes: { languages: { id: string }[] } };
  return manifest.contributes.languages.map(({ id }) => id);
}

async function showFailure(failure: unknown): Promise<void> {
  const message = failure instanceof Error ? failure.message : String(failure);
  if (!(failure instanceof ToolError) || !failure.isMissing) {
    await vscode.window.showErrorMessage(message);
    return;
  }
  const openSettings = "Open Settings";
  if ((await vscode.window.showErrorMessage(message, openSettings)) === openSettings) {
    await vscode.commands.executeCommand("workbench.action.openSettings", "kvrmem.path");
  }
}

async function stopServer(): Promise<void> {
  const last = client;
  client = undefined;
  try {
    await last?.dispose();
  } catch {
    // The server has already ended.
  }
}

async function replaceServer(languages: readonly string[]): Promise<void> {
  await stopServer();
  const next = new LanguageClient(
    "kvrmem",
    "Memory files",
    { command: toolPath(), args: serverArguments(settings()) },
    { documentSelector: languages.map((language) => ({ scheme: "file", language })) },
  );
  try {
    await next.start();
    client = next;
  } catch {
    // Highlighting works without the server.
    void showFailure(new ToolError(`${toolPath()} cannot be started as a language server`, true));
  }
}

function restartServer(languages: readonly string[]): Promise<void> {
  lastChange = lastChange.then(() => replaceServer(languages));
  return lastChange;
}

function headOf(document: vscode.TextDocument): string {
  const head = document.getText(new vscode.Range(0, 0, headLines, 0));
  return document.lineCount > headLines ? head + lastLineOf(document) : head;
}

function lastLineOf(document: vscode.TextDocument): string {
  for (let line = document.lineCount - 1; line >= headLines; --line) {
    const { text, isEmptyOrWhitespace } = document.lineAt(line);
    if (!isEmptyOrWhitespace) {
      return text;
    }
  }
  return "";
}

/** Replaces the language of the extension if the contents indicate another one. */
async function correctLanguage(document: vscode.TextDocument, languages: readonly string[]): Promise<void> {
  const file = document.uri.toString();
  if (!languages.includes(document.languageId) || judged.has(file)) {
    return;
  }
  judged.add(file);
  const language = languageOf(extname(document.uri.path).slice(1), headOf(document)) ?? "plaintext";
  if (language !== document.languageId) {
    await vscode.languages.setTextDocumentLanguage(document, language);
  }
}

/** Saves the active file and returns its path; undefined if there is none or if it was not saved. */
async function savedActiveFile(): Promise<string | undefined> {
  const document = vscode.window.activeTextEditor?.document;
  if (document?.uri.scheme !== "file") {
    await vscode.window.showErrorMessage("The active editor shows no file.");
    return undefined;
  }
  return !document.isDirty || (await document.save()) ? document.uri.fsPath : undefined;
}

async function chosenFormat(file: string): Promise<OutputFormat | undefined> {
  const formats = outputFormats(await runTool(toolPath(), ["formats", "--json"], dirname(file)));
  const items = formats.map((format) => ({ label: format.title, description: format.name, format }));
  return (await vscode.window.showQuickPick(items, { placeHolder: "Format of the new file" }))?.format;
}

async function convert(): Promise<void> {
  const file = await savedActiveFile();
  const format = file === undefined ? undefined : await chosenFormat(file);
  if (file === undefined || format === undefined) {
    return;
  }
  const name = basename(file, extname(file)) + (format.extensions[0] === undefined ? "" : `.${format.extensions[0]}`);
  const target = await vscode.window.showSaveDialog({
    defaultUri: vscode.Uri.file(join(dirname(file), name)),
    ...(format.extensions.length === 0 ? {} : { filters: { [format.title]: [...format.extensions] } }),
  });
  if (target === undefined) {
    return;
  }
  await runTool(toolPath(), convertArguments(settings(), format.name, file, target.fsPath), dirname(file));
  await vscode.commands.executeCommand("vscode.open", target);
}

async function drawn(file: string): Promise<string> {
  const folder = await mkdtemp(join(tmpdir(), "kvrmem-"));
  try {
    const picture = join(folder, "picture.svg");
    await runTool(toolPath(), plotArguments(settings(), file, picture), dirname(file));
    return await readFile(picture, "utf8");
  } finally {
    await rm(folder, { recursive: true });
  }
}

async function plot(): Promise<void> {
  const file = await savedActiveFile();
  if (file === undefined) {
    return;
  }
  const page = picturePage(await drawn(file), basename(file));
  const panel = vscode.window.createWebviewPanel("kvrmem.plot", basename(file), vscode.ViewColumn.Beside);
  panel.webview.html = page;
}

/** Wraps COMMAND: the result shows a failure instead of throwing it. */
function withFailureShown(command: () => Promise<void>): () => Promise<void> {
  return () => command().catch(showFailure);
}

export async function activate(context: vscode.ExtensionContext): Promise<void> {
  const languages = ourLanguages(context);
  const correct = (document: vscode.TextDocument) => void correctLanguage(document, languages);
  context.subscriptions.push(
    vscode.commands.registerCommand("kvrmem.convert", withFailureShown(convert)),
    vscode.commands.registerCommand("kvrmem.plot", withFailureShown(plot)),
    vscode.commands.registerCommand("kvrmem.restart", () => restartServer(languages)),
    vscode.workspace.onDidOpenTextDocument(correct),
    vscode.workspace.onDidChangeConfiguration((change) => {
      if (change.affectsConfiguration("kvrmem")) {
        void restartServer(languages);
      }
    }),
  );
  vscode.workspace.textDocuments.forEach(correct);
  await restartServer(languages);
}

export async function deactivate(): Promise<void> {
  await lastChange;
  await stopServer();
}
