#!/usr/bin/env python3
"""usage: make_seeds.py TREE FOLDER

Writes the first inputs of every fuzz target into FOLDER/TARGET, from the samples and the recorded imports in TREE.
Records beyond the first few of an answer are left out: a fuzzer needs small inputs."""
import hashlib
import json
import pathlib
import re
import sys

LONGEST = 6000
RECORD = re.compile(r"<(?P<name>\w+Ret)>.*?</(?P=name)>\s*", re.S)
ROW = re.compile(r"<(?P<name>TextRow|DataRow|SubtotalRow|TotalRow)\b.*?</(?P=name)>\s*", re.S)

tree = pathlib.Path(sys.argv[1])
folder = pathlib.Path(sys.argv[2])


def keep(target, *parts):
    """Writes one input; parts are texts or bytes."""
    data = b"".join(part if isinstance(part, bytes) else part.encode() for part in parts)
    place = folder / target
    place.mkdir(parents=True, exist_ok=True)
    (place / hashlib.sha1(data).hexdigest()).write_bytes(data)


def shortened(answer):
    """Returns an answer with only the first few of its records or rows of each kind."""
    for pattern, most in ((ROW, 4), (RECORD, 4), (RECORD, 1)):
        seen = {}

        def first(match):
            name = match.group("name")
            seen[name] = seen.get(name, 0) + 1
            return match.group(0) if seen[name] <= most or name == "ReportRet" else ""

        if len(answer) > LONGEST or pattern is ROW:
            answer = pattern.sub(first, answer)
    return answer


READERS = {"AccountQueryRs": [0], "ItemQueryRs": [1], "BillQueryRs": [2, 7], "CheckQueryRs": [3],
           "CreditCardChargeQueryRs": [4], "InvoiceQueryRs": [5, 8], "SalesReceiptQueryRs": [6],
           "GeneralSummaryReportQueryRs": [9, 10], "HostQueryRs": [11, 12], "CompanyQueryRs": [12]}
QUESTIONS = {"AccountQueryRs": [2, 3, 4, 6], "ItemQueryRs": [5], "BillQueryRs": [7], "CheckQueryRs": [8],
             "CreditCardChargeQueryRs": [9], "InvoiceQueryRs": [10], "SalesReceiptQueryRs": [11],
             "GeneralSummaryReportQueryRs": [12, 13, 14, 15], "HostQueryRs": [0], "CompanyQueryRs": [1]}
# Expenses and income with all balances from transactions (1) and from reports (2), and past performance.
OPTIONS = [bytes([product, included, 3, 5, 0, 7, 1, 0, 1, 0, major, 0, 0, included & 4 or 3, 0, 0])
           for product in range(3) for included in (3, 7) for major in range(2)]


def recorded():
    """Adds the answers and requests of the recorded imports."""
    kinds = {}
    for recording in sorted((tree / "tests/recorded_imports/recordings").glob("*.jsonl")):
        lines = recording.read_text().splitlines()
        short = [lines[0]]
        for line in lines[1:]:
            exchange = json.loads(line)
            request, answer = exchange["request"], shortened(exchange.get("response", ""))
            name = re.search(r"<(\w+QueryRs)\b", answer).group(1)
            kinds[name] = kinds.get(name, 0) + 1
            if kinds[name] > 40 or len(answer) > LONGEST:
                continue
            for reader in READERS.get(name, []):
                keep("answers", bytes([reader]), answer)
            for number, options in enumerate(OPTIONS):
                for question in QUESTIONS.get(name, []):
                    if kinds[name] % len(OPTIONS) == number:
                        keep("imports", options, bytes([question]), answer, b"\0")
            messages = re.sub(r"^.*?(?=<QBXMLMsgsRq)", "", request, flags=re.S)
            keep("requests", bytes([0, 2]), request)
            keep("requests", bytes([3, 2]), re.sub(r"^<QBXMLMsgsRq[^>]*>|</QBXMLMsgsRq>.*$", "", messages, flags=re.S))
            if name == "AccountQueryRs":
                for product in range(3):
                    keep("deserialize", bytes([1, product]), answer)
            if name != "GeneralSummaryReportQueryRs":
                keep("load", answer)
            if kinds[name] <= 4:
                exchange["response"] = answer
                short.append(json.dumps(exchange))
        keep("recordings", bytes([0]), "\n".join(short[:8]) + "\n")
    keep("recordings", bytes([0]), '{"exchange":1,"company":"nursery.qbw","major":1,"minor":1}\n'
         '{"request":"a","error":{"number":-2147220480,"description":"refused"}}\n'
         '{"request":"a","response":"<QBXML/>"}\n{"request":"a","response":"\\u00e9\\ud83d\\ude00"}\n')
    keep("recordings", bytes([1]), "nursery.qbw\0<Rq/>\0<QBXML/>")


def samples():
    """Adds the sample companies' documents and the plans."""
    for document in sorted(tree.glob("samples/*/*.xml")):
        keep("load", shortened(document.read_text()))
    tables = re.compile(r"<tableitem id=\"([^\"]*)\".*?</tableitem>", re.S)
    for plan in sorted(tree.glob("samples/plans/*.kpf")):
        text = plan.read_text()
        keep("plan_files", text)
        items = [match.group(0) for match in tables.finditer(text)]
        keep("plan_files", re.sub(tables, "", text).replace("</tables>", items[0] + "</tables>"), b"\0<tables>",
             items[0], "</tables>")
        for item in items:
            for product in range(3):
                keep("deserialize", bytes([0, product]), "<tables>", item, "</tables>")
        for kind, table in enumerate(("0400", "0400", "0600", "2000", "0800")):
            planned = next((item for item in items if item.startswith('<tableitem id="20' + "0" * 26 + table)), None)
            actual = next((item for item in items if item.startswith('<tableitem id="21' + "0" * 26 + table)), "")
            if planned:
                for product in range(3):
                    keep("plan_tables", bytes([kind, product, 3, 5, 0, 100, 1]), planned, b"\0", actual)


def numbers():
    for text in ("12.50", "-1,234.56", "($7)", "1e-7", "1.7976931348623157e308", " 5 ", "1E+400", ".", "0x1F"):
        keep("answers", bytes([13]), text)
    keep("answers", bytes([15]), 'C-1\0I-1\x002.50\0<COGS cogsid="C-1" workid="I-1" averagecost="2.50"/>')


def command_lines():
    """Adds the command lines of the documents and of the help."""
    lines = []
    for text in ("README.md", "docs/commands.md", "src/cli/help_texts.h"):
        joined = (tree / text).read_text().replace("\\\n", " ")
        lines += re.findall(r"^\s*(?:\$ )?krnqb (.*)$", joined, re.M)
    lines += ["--version", "tables --product bri --json", "request 330 --from 2002-01-01 --to 2002-12-31",
              "plan show x --cells --table 2000", "import --plan p --income --growth-income -3 --strict --json"]
    for line in lines:
        words = [word.strip('"') for word in re.findall(r'"[^"]*"|\S+', line)]
        keep("command_lines", "\0".join(words))


CSV = """Greenleaf Nursery
Profit & Loss
January through February 2002
Accrual Basis
,Jan 02,Feb 02,TOTAL
   Ordinary Income/Expense
      Income
         Sales
            60210 \u00b7 Plants,"1,000.00",200.50,"1,200.50"
            Sales - Other,10.00,,10.00
         Total Sales,"1,010.00",200.50,"1,210.50"
      Total Income,"1,010.00",200.50,"1,210.50"
   Gross Profit,"1,010.00",200.50,"1,210.50"
      Expense
         Rent,(5.00),$1.00,-4.00
      Total Expense,-5.00,1.00,-4.00
Net Ordinary Income,"1,015.00",199.50,"1,214.50"
Net Income,"1,015.00",199.50,"1,214.50"
"""
DETAIL = """January 2002
,Type,Date,Num,Name,Memo,Account,Amount,Balance
Expense
Payroll
,Paycheck,01/15/2002,101,"Ames, Jo",Wages,Payroll,"1,000.00","1,000.00"
Total Payroll,,,,,,,"1,000.00","1,000.00"
Total Expense,,,,,,,"1,000.00","1,000.00"
Net Income,,,,,,,"-1,000.00","-1,000.00"
"""
DETAIL_ANSWER = """<QBXML><QBXMLMsgsRs><GeneralDetailReportQueryRs statusCode="0"><ReportRet><ReportTitle>P</ReportTitle>
<ColDesc colID="1"><ColType>Blank</ColType></ColDesc><ColDesc colID="2"><ColType>TxnType</ColType></ColDesc>
<ColDesc colID="3"><ColType>Date</ColType></ColDesc><ColDesc colID="4"><ColType>Amount</ColType></ColDesc><ReportData>
<TextRow rowNumber="1" value="Income" /><TextRow rowNumber="2" value="Sales" /><DataRow rowNumber="3">
<ColData colID="2" value="Bill" /><ColData colID="3" value="2002-01-05" /><ColData colID="4" value="1.50" /></DataRow>
<SubtotalRow rowNumber="4"><ColData colID="1" value="Total Sales" /><ColData colID="4" value="1.50" /></SubtotalRow>
<TotalRow rowNumber="5"><ColData colID="1" value="Net Income" /><ColData colID="4" value="1.50" /></TotalRow>
</ReportData></ReportRet></GeneralDetailReportQueryRs></QBXMLMsgsRs></QBXML>
"""


def statements():
    """Adds reports as answers and as CSV, alone and with a second document after a NUL."""
    flat = re.sub("^ +", "", CSV, flags=re.M)
    semicolons = re.sub('"(.*?),(.*?)"', r"\1\2", CSV).replace(",", ";")
    documents = [CSV, flat, CSV.encode("cp1252"), "\ufeff" + CSV, semicolons, semicolons.replace(".", ","),
                 DETAIL, DETAIL_ANSWER, "Account,2002-01\nSales:Plants,5\nTotal,5\n"]
    recording = (tree / "tests/recorded_imports/recordings/nursery-2.0.jsonl").read_text().splitlines()
    for line in recording[1:]:
        answer = json.loads(line).get("response", "")
        if "<ReportTitle>Profit" in answer and len(documents) < 14:
            documents.append(re.sub(r'<ColData colID="(?!14|1"|2").*\n', "", shortened(answer)))
    for document in documents:
        keep("statements", document)
        keep("statements", document, b"\0", DETAIL)


recorded()
statements()
samples()
numbers()
command_lines()
