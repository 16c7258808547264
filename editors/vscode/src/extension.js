// Starts the language server, and shows the preview page of a shader in a panel.

const vscode = require('vscode');
const { LanguageClient } = require('vscode-languageclient/node');

let client;
const panels = new Map();  // by the URI of the source

function serverOptions() {
    const command = vscode.workspace.getConfiguration('shaderqx').get('server') || 'sqxls';
    return { command, args: ['--stdio'] };
}

/// Returns the HTML of a panel: a frame with the preview page at `address`, which sqxview serves.
function pageText(address) {
    const origin = new URL(address).origin;
    return `<!DOCTYPE html><html><head><meta charset="utf-8">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; frame-src ${origin}; style-src 'unsafe-inline'">
<style>html, body, iframe { margin: 0; padding: 0; border: 0; width: 100%; height: 100vh; }</style>
</head><body><iframe src="${address}"></iframe></body></html>`;
}

async function showPage(source, address) {
    const local = await vscode.env.asExternalUri(vscode.Uri.parse(address));
    let panel = panels.get(source);
    if (!panel) {
        const name = source.substring(source.lastIndexOf('/') + 1);
        panel = vscode.window.createWebviewPanel('shaderqx.preview', `Preview ${decodeURIComponent(name)}`,
            { viewColumn: vscode.ViewColumn.Beside, preserveFocus: true },
            { enableScripts: true, retainContextWhenHidden: true });
        panel.onDidDispose(() => panels.delete(source));
        panels.set(source, panel);
    }
    panel.webview.html = pageText(local.toString(true));
    panel.reveal(undefined, true);
}

async function preview(source) {
    const uri = source || vscode.window.activeTextEditor?.document.uri.toString();
    if (!uri || !client?.isRunning()) {
        vscode.window.showWarningMessage('shaderqx: Open a shader first.');
        return;
    }
    await vscode.workspace.textDocuments.find((d) => d.uri.toString() === uri)?.save();
    try {
        const page = await client.sendRequest('workspace/executeCommand',
            { command: 'sqxls.preview', arguments: [uri, { show: false }] });
        await showPage(uri, page.uri);
    } catch (error) {
        vscode.window.showErrorMessage(`shaderqx: ${error.message}`);
    }
}

async function tellHowToInstall(command, error) {
    const choice = await vscode.window.showErrorMessage(
        `shaderqx: The server '${command}' could not be started (${error.message}). Install the package ` +
        `'shaderqx', or name the program sqxls in the setting 'shaderqx.server'.`, 'Open Settings');
    if (choice)
        vscode.commands.executeCommand('workbench.action.openSettings', 'shaderqx.server');
}

async function start() {
    const options = serverOptions();
    client = new LanguageClient('shaderqx', 'shaderqx', options, {
        documentSelector: [{ language: 'sl' }, { scheme: 'file', pattern: '**/*.{h,slh}' }],
        initializationOptions: vscode.workspace.getConfiguration('shaderqx'),
        synchronize: { configurationSection: 'shaderqx' },
        middleware: {
            executeCommand: (command, args, next) =>
                command === 'sqxls.preview' ? preview(args[0]) : next(command, args),
        },
    });
    try {
        await client.start();
    } catch (error) {
        client = undefined;
        await tellHowToInstall(options.command, error);
    }
}

async function stop() {
    const running = client;
    client = undefined;
    if (running)
        await running.stop();
}

async function activate(context) {
    context.subscriptions.push(
        vscode.commands.registerCommand('shaderqx.preview', () => preview()),
        vscode.commands.registerCommand('shaderqx.restart', async () => { await stop(); await start(); }),
        vscode.workspace.onDidChangeConfiguration(async (change) => {
            if (change.affectsConfiguration('shaderqx.server')) {
                await stop();
                await start();
            }
        }));
    await start();
}

module.exports = { activate, deactivate: stop };
