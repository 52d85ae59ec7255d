#!/usr/bin/env python3
"""usage: recalculation_test.py KRNQB SAMPLES

Exports plans after imports and lets LibreOffice compute the spreadsheets anew. Fails unless every cell of every block
is what `krnqb plan show --values` prints, and every formula amounts to the value that the export wrote beside it.
LibreOffice gets copies in which all these values are wrong, so that it cannot pass one on. Ends with 77, which means
skipped, where LibreOffice is missing.
"""
import fcntl
import json
import os
import pathlib
import pty
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import termios
import xml.etree.ElementTree as tree
import zipfile

main = '{http://schemas.openxmlformats.org/spreadsheetml/2006/main}'
related = '{http://schemas.openxmlformats.org/officeDocument/2006/relationships}'
cent = 0.0051
settings = '''<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry">
<item oor:path="/org.openoffice.Office.Calc/Formula/Load"><prop oor:name="OOXMLRecalcMode"><value>0</value></prop></item>
</oor:items>
'''


class Faults:
    def __init__(self):
        self.lines = []

    def add(self, line):
        self.lines.append(line)


def run(*arguments):
    subprocess.run([str(argument) for argument in arguments], check=True, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL)


def shown(krnqb, plan):
    """Returns the lines of `plan show --values` on a terminal that is wide enough for every row."""
    ours, its = pty.openpty()
    attributes = termios.tcgetattr(its)
    attributes[1] &= ~termios.OPOST
    termios.tcsetattr(its, termios.TCSANOW, attributes)
    fcntl.ioctl(its, termios.TIOCSWINSZ, struct.pack('HHHH', 50, 4000, 0, 0))
    process = subprocess.Popen([krnqb, 'plan', 'show', plan, '--values'], stdout=its)
    os.close(its)
    text = b''
    while True:
        try:
            part = os.read(ours, 65536)
        except OSError:
            break
        if not part:
            break
        text += part
    os.close(ours)
    if process.wait() != 0:
        raise SystemExit('krnqb plan show failed')
    return text.decode().split('\n')


def shown_blocks(krnqb, plan):
    """Returns the cells after the name of every row of every block, as texts."""
    content = json.loads(subprocess.run([krnqb, 'plan', 'show', plan, '--json'], check=True,
                                        capture_output=True).stdout)
    lines = iter(shown(krnqb, plan))
    for table in content['tables']:
        while not re.fullmatch('=+', next(lines)):
            pass
        for block in table['blocks']:
            if next(lines) != '':
                raise SystemExit(f'{plan}: expected an empty line before a block')
            next(lines)  # its title
            kind = len(block['rows'][0])
            if kind in (13, 14) or block['id'].startswith('db_pastperformance_'):
                next(lines)  # its headings
            rows = []
            for row in block['rows']:
                line = next(lines)
                cells = re.split(' {2,}', line.strip())[1 - len(row):] if len(row) > 1 else []
                rows.append((line.strip(), cells))
            yield block, rows


class Book:
    """The sheets of a spreadsheet: for each a table from places such as B7 to (kind, value, formula)."""

    def __init__(self, path):
        self.sheets = {}
        with zipfile.ZipFile(path) as archive:
            names = archive.namelist()
            texts = []
            if 'xl/sharedStrings.xml' in names:
                for item in tree.fromstring(archive.read('xl/sharedStrings.xml')):
                    texts.append(''.join(part.text or '' for part in item.iter(main + 't')))
            targets = {relation.get('Id'): relation.get('Target')
                       for relation in tree.fromstring(archive.read('xl/_rels/workbook.xml.rels'))}
            for sheet in tree.fromstring(archive.read('xl/workbook.xml')).iter(main + 'sheet'):
                target = targets[sheet.get(related + 'id')].lstrip('/')
                target = target if target.startswith('xl/') else 'xl/' + target
                self.sheets[sheet.get('name')] = self.cells(tree.fromstring(archive.read(target)), texts)

    @staticmethod
    def cells(sheet, texts):
        cells = {}
        for cell in sheet.iter(main + 'c'):
            value, formula = cell.find(main + 'v'), cell.find(main + 'f')
            kind = cell.get('t', 'n')
            if value is None or value.text is None:
                continue
            content = float(value.text) if kind == 'n' else value.text
            if kind == 's':
                content = texts[int(value.text)]
            cells[cell.get('r')] = (kind, content, formula.text if formula is not None else None)
        return cells


def with_wrong_values(source, target):
    """Copies a spreadsheet, with another value beside each formula."""
    formulas = 0
    with zipfile.ZipFile(source) as old, zipfile.ZipFile(target, 'w', zipfile.ZIP_DEFLATED) as new:
        for name in old.namelist():
            content = old.read(name)
            if name.startswith('xl/worksheets/sheet'):
                content, count = re.subn(rb'(</f><v>)[^<]*(</v>)', rb'\g<1>-987654.25\2', content)
                formulas += count
            new.writestr(name, content)
    return formulas


def column(index):
    name = ''
    index += 1
    while index:
        index, digit = divmod(index - 1, 26)
        name = chr(65 + digit) + name
    return name


def number(text):
    return float(text.replace(',', ''))


def check_cell(where, text, written, computed, faults):
    """Compares a cell that is shown as `text` with the cell as exported and as computed anew."""
    if text == '·':
        if computed is not None:
            faults.add(f'{where}: {computed} instead of an empty cell')
    elif computed is None or written is None:
        faults.add(f'{where}: empty instead of {text}')
    elif text.startswith('='):
        if '=' + (written[2] or '') != text and written[1] != text:
            faults.add(f'{where}: {written} instead of {text}')
    elif re.fullmatch(r'-?[\d,]*\.?\d+(E[+-]?\d+)?', text) and isinstance(computed[1], float):
        if abs(computed[1] - number(text)) > cent:
            faults.add(f'{where}: computed {computed[1]} instead of {text}')
    elif computed[1] != text:
        faults.add(f'{where}: {computed} instead of {text}')


def check_plan(krnqb, plan, written, computed, faults):
    counts = {'cells': 0, 'growth formulas': 0, 'formulas': 0}
    names = list(written.sheets)
    if list(computed.sheets) != names or names[:2] != ['Summary', 'Warnings']:
        faults.add(f'{plan}: its sheets are {names}, computed anew {list(computed.sheets)}')
        return counts
    blocks = list(shown_blocks(krnqb, plan))
    if len(blocks) != len(names) - 2:
        faults.add(f'{plan}: {len(blocks)} blocks in {len(names) - 2} sheets')
        return counts
    for (block, rows), name in zip(blocks, names[2:]):
        for index, (line, cells) in enumerate(rows):
            row = int(block['start_row']) + index
            label = written.sheets[name].get(f'A{row}', ('', '·', None))[1]
            if not (line + '  ').startswith(label + '  '):
                faults.add(f'{plan}: {name} A{row}: {label} instead of the name in "{line}"')
            for at, text in enumerate(cells, start=1):
                place = f'{column(at)}{row}'
                counts['cells'] += 1
                counts['growth formulas'] += '* (1 + B' in block['rows'][index][at]
                check_cell(f'{plan}: {name} {place}', text, written.sheets[name].get(place),
                           computed.sheets[name].get(place), faults)
    for name in names:
        for place, (_, value, formula) in written.sheets[name].items():
            if formula is None:
                continue
            counts['formulas'] += 1
            again = computed.sheets[name].get(place, ('', 'nothing', None))[1]
            if not isinstance(again, float) or abs(again - value) > cent:
                faults.add(f'{plan}: {name} {place} ={formula}: {value} is written, {again} is computed')
    return counts


def make_plans(krnqb, samples):
    """Makes plans after imports in the current folder and returns their names."""
    growth = ['--growth-income', '7', '--growth-cogs', '4', '--growth-expenses', '3']
    imports = ['--expenses', '--income', '--balances', 'all', '--quiet', *growth]
    run(krnqb, 'company', 'new', 'nursery.qbw', '--name', 'Nursery', '--fiscal-month', 'January', '--processor', '1.1')
    run(krnqb, 'company', 'load', 'nursery.qbw', *sorted(samples.glob('nursery/*.xml')))
    run(krnqb, 'company', 'generate', 'large.qbw', '--accounts', '400', '--transactions', '3000')
    plans = []
    for product in ('ald', 'bri', 'cor'):
        shutil.copy(samples / 'plans' / f'nursery-{product}.kpf', f'untouched-{product}.kpf')
        shutil.copy(samples / 'plans' / f'nursery-{product}.kpf', f'{product}.kpf')
        chosen = ['--select-all-expenses'] if product == 'bri' else []
        run(krnqb, 'import', '--company', 'nursery.qbw', '--plan', f'{product}.kpf', *imports, *chosen)
        run(krnqb, 'plan', 'new', f'large-{product}.kpf', '--product', product, '--start', '2003-01')
        run(krnqb, 'import', '--company', 'large.qbw', '--plan', f'large-{product}.kpf', *imports, *chosen)
        plans += [f'untouched-{product}', product, f'large-{product}']
    return plans


def compute_anew(files, office):
    profile = pathlib.Path('profile')
    (profile / 'user').mkdir(parents=True)
    (profile / 'user' / 'registrymodifications.xcu').write_text(settings)
    subprocess.run([office, f'-env:UserInstallation={profile.absolute().as_uri()}', '--headless', '--convert-to', 'xlsx',
                    '--outdir', 'computed', *files], check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                   timeout=240)


def main_program(krnqb, samples):
    office = shutil.which('soffice')
    # Other programs of LibreOffice bring soffice too.
    if not office or not os.path.exists(os.path.join(os.path.dirname(os.path.realpath(office)), 'libsclo.so')):
        print('skipped: LibreOffice Calc is not installed; script/viewers installs it')
        return 77
    faults = Faults()
    with tempfile.TemporaryDirectory(prefix='krnqb-recalculation-') as folder:
        os.chdir(folder)
        os.mkdir('wrong')
        plans = make_plans(krnqb, samples)
        for plan in plans:
            run(krnqb, 'plan', 'export', f'{plan}.kpf', '--xlsx', f'{plan}.xlsx')
            if with_wrong_values(f'{plan}.xlsx', f'wrong/{plan}.xlsx') == 0:
                faults.add(f'{plan}: no formulas')
        compute_anew([f'wrong/{plan}.xlsx' for plan in plans], office)
        for plan in plans:
            counts = check_plan(krnqb, f'{plan}.kpf', Book(f'{plan}.xlsx'), Book(f'computed/{plan}.xlsx'), faults)
            print(f'{plan}:', ', '.join(f'{count} {what}' for what, count in counts.items()))
            if counts['cells'] < 100 or (not plan.startswith('untouched') and counts['growth formulas'] < 100):
                faults.add(f'{plan}: too little was compared')
        os.chdir('/')
    for line in faults.lines[:40]:
        print(line)
    if faults.lines:
        print(f'{len(faults.lines)} faults')
    return 1 if faults.lines else 0


if __name__ == '__main__':
    sys.exit(main_program(os.path.abspath(sys.argv[1]), pathlib.Path(sys.argv[2]).absolute()))
