#!/usr/bin/python3
"""Sums the monthly amounts of an import in Python with lxml.

usage: amounts.py RESPONSES CELLS [--amounts]

RESPONSES is a folder with the answers to an import's requests (krnqb_bench responses), CELLS the cells of the plan
after that import (krnqb plan show --cells). Compares the amounts with the plan's actual amounts, to one part in a
million; an amount that differs, or an account without a row, is an error. Prints lines "NAME VALUE" as krnqb_bench
does; --amounts prints each account's twelve months before them.

The times include parsing and evaluating the answers, but not reading the files and comparing.
"""

import argparse
import math
import pathlib
import resource
import sys
import time
from collections import defaultdict

from lxml import etree

MONTHS = 12
PURCHASE_LINES = ("ExpenseLineRet", "ItemLineRet")
SALES_LINES = {"InvoiceQueryRs": "InvoiceLineRet", "SalesReceiptQueryRs": "SalesReceiptLineRet"}

# The blocks of the plan by kind of account: the planned block contains the names, the actual block the amounts, row by
# row.
BLOCKS = {"Income": "db_sales_values_sales", "CostOfGoodsSold": "db_sales_values_costs",
          "Expense": "db_income_range_cat3"}
DEPRECIATION = "Depreciation"


class Accounts:
    """The accounts of one type and the monthly amounts of the top-level accounts."""

    def __init__(self, response):
        self.records = {record.findtext("ListID"): record for record in response.iterfind("AccountRet")}
        self.top_level_names = {}
        self.amounts = {record.findtext("Name"): [0.0] * MONTHS
                        for record in self.records.values() if record.findtext("Sublevel") == "0"}

    def top_level_name(self, account):
        """Returns the name of the top-level account above an account, or None for an account of another type."""
        if account not in self.top_level_names:
            record = self.records.get(account)
            while record is not None and record.findtext("Sublevel") != "0":
                record = self.records.get(record.findtext("ParentRef/ListID"))
            self.top_level_names[account] = None if record is None else record.findtext("Name")
        return self.top_level_names[account]

    def add(self, account, month, amount):
        """Adds an amount; returns False for an account of another type."""
        name = self.top_level_name(account)
        if name is None:
            return False
        self.amounts[name][month] += amount
        return True

    def spread_balances(self):
        """Spreads the balance of an account without amounts over the months that have amounts."""
        active = [month + 1 for amounts in self.amounts.values() for month in range(MONTHS) if amounts[month] != 0]
        months = max(active, default=MONTHS)
        for record in self.records.values():
            if record.findtext("Sublevel") != "0":
                continue
            balance = float(record.findtext("Balance") or 0)
            amounts = self.amounts[record.findtext("Name")]
            if balance != 0 and sum(amounts) == 0:
                amounts[:months] = [balance / months] * months


class Items:
    def __init__(self, response):
        self.records = {record.findtext("ListID"): record for record in response}
        self.accounts = {}

    def account(self, item, reference):
        """Returns the account of an item: its IncomeAccountRef or its ExpenseAccountRef."""
        key = (item, reference)
        if key not in self.accounts:
            record = self.records.get(item)
            self.accounts[key] = None if record is None else (
                record.findtext(f"SalesAndPurchase/{reference}/ListID")
                or record.findtext("SalesOrPurchase/AccountRef/ListID")
                or record.findtext(f"{reference}/ListID"))
        return self.accounts[key]

    def cost(self, item):
        """Returns the cost account and average cost of an inventory item, or None for any other item."""
        record = self.records.get(item)
        account, average = record.findtext("COGSAccountRef/ListID"), record.findtext("AverageCost")
        return (account, float(average)) if account and average else None


class Import:
    def __init__(self):
        self.income = self.cost = self.expense = self.items = None
        self.costs = {}
        self.billable = {}
        self.months = []

    def read(self, response, month):
        """Reads one response element. Lists must come first, then purchases, then sales."""
        if response.tag == "AccountQueryRs":
            accounts = Accounts(response)
            kind = {"1": "income", "2": "cost", "4": "expense"}[response.get("requestID")]
            setattr(self, kind, accounts)
        elif response.tag == "ItemQueryRs":
            self.items = Items(response)
        elif response.tag in SALES_LINES:
            self.read_sales(response, self.month_index(month))
        elif response.tag in ("BillQueryRs", "CheckQueryRs", "CreditCardChargeQueryRs"):
            self.read_purchases(response, self.month_index(month))

    def month_index(self, month):
        if month not in self.months:
            self.months.append(month)
        return self.months.index(month)

    def read_purchases(self, response, month):
        for transaction in response:
            for line in transaction.iterchildren(*PURCHASE_LINES):
                amount_text = line.findtext("Amount")
                amount = float(amount_text or 0)
                account = line.findtext("AccountRef/ListID")
                item = None if account else line.findtext("ItemRef/ListID")
                if amount != 0:
                    target = account or self.items.account(item, "ExpenseAccountRef")
                    if not self.expense.add(target, month, amount):
                        self.income.add(target, month, -amount)
                customer = line.findtext("CustomerRef/ListID")
                if customer is not None and amount_text is not None:
                    # An inventory item is recorded as False: nothing is deducted for it.
                    billed = account or (not self.costs_of(item) and self.items.account(item, "IncomeAccountRef"))
                    if billed is not None:
                        self.billable.setdefault((customer, amount_text), billed)

    def read_sales(self, response, month):
        for line in response.iter(SALES_LINES[response.tag]):
            amount_text = line.findtext("Amount")
            amount = float(amount_text or 0)
            if amount == 0:
                continue
            item = (line.findtext("ItemRef/ListID") or line.findtext("ItemGroupRef/ListID")
                    or line.getparent().findtext("ItemGroupRef/ListID"))
            if item is None:
                continue
            account = self.items.account(item, "IncomeAccountRef")
            if not account:
                self.take_back(line, amount_text, amount, month)
                continue
            cost = self.costs_of(item)
            if cost:
                quantity = float(line.findtext("Quantity") or 0) or 1.0
                self.cost.add(cost[0], month, cost[1] * quantity)
            if not self.income.add(account, month, amount):
                self.expense.add(account, month, -amount)

    def take_back(self, line, amount_text, amount, month):
        """Deducts an expense that a line bills to a customer at exactly its amount from the expense account."""
        customer = line.getparent().findtext("CustomerRef/ListID")
        if customer is None:
            customer = line.getparent().getparent().findtext("CustomerRef/ListID")
        account = self.billable.get((customer, amount_text))
        if account:
            self.expense.add(account, month, -amount)

    def costs_of(self, item):
        if item not in self.costs:
            self.costs[item] = self.items.cost(item) if item in self.items.records else None
        return self.costs[item]

    def amounts(self):
        return {"Income": self.income.amounts, "CostOfGoodsSold": self.cost.amounts, "Expense": self.expense.amounts}


def add_up(folder):
    """Returns the amounts by kind and account, and the wall time and CPU time of parsing and summing."""
    accounting = Import()
    wall = cpu = 0.0
    for path in sorted(folder.glob("*.xml")):
        text = path.read_bytes()
        month = path.stem[-7:]
        wall_begin, cpu_begin = time.perf_counter(), time.process_time()
        for response in etree.fromstring(text).find("QBXMLMsgsRs"):
            accounting.read(response, month)
        del response
        wall += time.perf_counter() - wall_begin
        cpu += time.process_time() - cpu_begin
    wall_begin, cpu_begin = time.perf_counter(), time.process_time()
    accounting.expense.spread_balances()
    wall += time.perf_counter() - wall_begin
    cpu += time.process_time() - cpu_begin
    return accounting.amounts(), wall, cpu


def plan_rows(cells_file):
    """Returns rows of cells by block and row number."""
    blocks = defaultdict(lambda: defaultdict(dict))
    with open(cells_file, encoding="ascii") as cells:
        for cell in cells:
            _, block, row, column, text = cell.rstrip("\n").split("\t", 4)
            blocks[block][int(row)][int(column)] = text.encode("ascii").decode("unicode_escape")
    return blocks


def expected_rows(kind, amounts):
    """The amounts by the name of the plan's row. The row of depreciation, where it is no account, holds the accounts
    whose names occur within that word."""
    rows = dict(amounts)
    if kind == "Expense" and DEPRECIATION not in rows:
        parts = [name for name in rows if name.lower() in DEPRECIATION.lower()]
        rows[DEPRECIATION] = [sum(rows[name][month] for name in parts) for month in range(MONTHS)]
        for name in parts:
            del rows[name]
    return rows


def differences(amounts, blocks):
    for kind, block in BLOCKS.items():
        names = {cells[0]: row for row, cells in blocks[block].items()}
        for name, expected in expected_rows(kind, amounts[kind]).items():
            if name not in names:
                yield f"{kind}: the plan has no row {name}"
                continue
            actual = blocks[block + "_actual"][names[name]]
            for month in range(MONTHS):
                planned = float(actual[month + 1])
                if not math.isclose(planned, expected[month], rel_tol=1e-6, abs_tol=1e-6):
                    yield f"{kind}: {name}, month {month + 1}: {expected[month]} here, {planned} in the plan"


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("responses", type=pathlib.Path)
    parser.add_argument("cells")
    parser.add_argument("--amounts", action="store_true", help="print the monthly amounts per account")
    arguments = parser.parse_args()
    amounts, wall, cpu = add_up(arguments.responses)
    peak = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss * 1024
    if arguments.amounts:
        for kind, accounts in amounts.items():
            for name, months in accounts.items():
                print(kind, name, *(f"{amount:.2f}" for amount in months), sep="\t")
    found = list(differences(amounts, plan_rows(arguments.cells)))
    for difference in found:
        print(f"amounts.py: {difference}", file=sys.stderr)
    compared = MONTHS * sum(len(accounts) for accounts in amounts.values())
    print(f"wall {wall:.3f}\ncpu {cpu:.3f}\npeak {peak}\namounts {compared}\ndifferent {len(found)}")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
