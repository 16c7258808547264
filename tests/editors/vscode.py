"""Checks the extension for Visual Studio Code. It has the version of the programs. The files of its language
configuration, grammar, snippets and icon exist, docs/editors.md names its settings, its source registers its
commands, and its snippets compile without a warning. Its package, if scripts/vscode.sh has made one, contains
the necessary files.

usage: vscode.py BIN_DIRECTORY VERSION
"""
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import zipfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
EXTENSION = ROOT / 'editors' / 'vscode'
KINDS = ['surface', 'light', 'displacement', 'volume', 'imager']
SETTINGS = ['server', 'warningLevel', 'includeFolders', 'macros', 'options', 'sqxmakeState', 'sqxview', 'inlayHints']


def check_manifest(version):
    manifest = json.loads((EXTENSION / 'package.json').read_text())
    assert manifest['version'] == version, 'not the version of the programs'
    contributes = manifest['contributes']
    paths = [contributes['languages'][0]['configuration'], contributes['grammars'][0]['path'],
             contributes['snippets'][0]['path'], manifest['icon']]
    for path in paths:
        assert (EXTENSION / path).is_file(), f'{path} is missing'
    properties = contributes['configuration']['properties']
    assert sorted(properties) == sorted('shaderqx.' + name for name in SETTINGS)
    page = (ROOT / 'docs' / 'editors.md').read_text()
    for name in SETTINGS[1:]:
        assert f'| `{name}` |' in page, f'docs/editors.md does not name {name}'
    pattern = contributes['problemPatterns'][0]
    for report, places in {'a.sl:3: ERROR: b: c': ('a.sl', '3', None), 'a.sl:3:5: ERROR: b: c': ('a.sl', '3', '5')}.items():
        found = re.match(pattern['regexp'], report)
        named = tuple(found.group(pattern[name]) for name in ('file', 'line', 'column', 'severity', 'message'))
        assert named == (*places, 'ERROR', 'b: c'), f'{report}: {named}'
    source = (EXTENSION / 'src' / 'extension.js').read_text()
    for command in contributes['commands']:
        assert f"registerCommand('{command['command']}'" in source, command


def check_snippets(programs):
    snippets = json.loads((EXTENSION / 'snippets' / 'sl.json').read_text())
    assert sorted(snippets) == sorted(KINDS)
    for kind, snippet in snippets.items():
        text = '\n'.join(snippet['body'])
        text = re.sub(r'\$\{\d+:(\w+)\}|\$\d+', lambda match: match.group(1) or '', text)
        with tempfile.TemporaryDirectory() as folder:
            (pathlib.Path(folder) / 'a.sl').write_text(text + '\n')
            run = subprocess.run([programs / 'shaderqx', '-w2', 'a.sl'], cwd=folder, capture_output=True, text=True)
        reports = [line for line in run.stderr.splitlines() if line.startswith('a.sl')]
        assert run.returncode == 0 and not reports, f'{kind}: {run.stderr}'


def check_package():
    package = ROOT / 'build' / 'vscode' / 'shaderqx.vsix'
    if not package.exists():
        print('scripts/vscode.sh has not made a package: skipped')
        return
    with zipfile.ZipFile(package) as archive:
        names = set(archive.namelist())
        bundle = archive.read('extension/out/extension.js').decode()
    for name in ['package.json', 'out/extension.js', 'icon.png', 'preview.png', 'snippets/sl.json',
                 'syntaxes/sl.tmLanguage.json', 'language-configuration.json']:
        assert 'extension/' + name in names, f'{name} is missing in the package'
    assert any(name.lower() == 'extension/readme.md' for name in names)
    assert not [name for name in names if 'node_modules' in name or '/src/' in name]
    assert 'textDocument/hover' in bundle, 'the client is not in the bundle'


def main():
    check_manifest(sys.argv[2])
    check_snippets(pathlib.Path(sys.argv[1]).resolve())
    check_package()


main()
