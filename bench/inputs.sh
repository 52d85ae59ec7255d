# shellcheck shell=bash
# Sourced by the scripts that measure: what they import.

# AccountDocument N [deep]: prints a response with N expense accounts, Account 1 to Account N, all of them top-level or each
# below the one before it.
AccountDocument() {
  awk -v count="$1" -v deep="${2-}" 'BEGIN {
    print "<?xml version=\"1.0\" ?>\n<QBXML>\n<QBXMLMsgsRs>"
    print "<AccountQueryRs statusCode=\"0\" statusSeverity=\"Info\" statusMessage=\"Status OK\">"
    for (i = 1; i <= count; i++) {
      printf "<AccountRet>\n<ListID>%X0000-%d</ListID>\n<Name>Account %d</Name>\n", i, 920000000 + i, i
      if (!deep) printf "<FullName>Account %d</FullName>\n", i
      print "<IsActive>true</IsActive>"
      if (deep && i > 1) printf "<ParentRef>\n<ListID>%X0000-%d</ListID>\n</ParentRef>\n", i - 1, 920000000 + i - 1
      printf "<Sublevel>%d</Sublevel>\n<AccountType>Expense</AccountType>\n", deep ? i - 1 : 0
      print "<Balance>1.00</Balance>\n<TotalBalance>1.00</TotalBalance>\n</AccountRet>"
    }
    print "</AccountQueryRs>\n</QBXMLMsgsRs>\n</QBXML>"
  }'
}

# Plan N: prints a plan with N expense rows and two closing rows in the planned and in the actual table; every second row
# is an account of the company.
Plan() {
  awk -v count="$1" '
    function Row(name, cells,   text, i) {
      text = "<row><c>" name "</c>"
      for (i = 2; i <= cells; i++) text = text "<c>0</c>"
      print text "</row>"
    }
    function Table(id, block, cells,   i) {
      print "<tableitem id=\"" id "\"><lastsavedid>1</lastsavedid><tableblocks><block id=\"" block "\" startrow=\"5\">"
      for (i = 1; i <= count; i++) Row((i % 2 ? "Account " : "Plan row ") i, cells)
      Row("Depreciation", cells)
      Row("Total", cells)
      print "</block></tableblocks></tableitem>"
    }
    BEGIN {
      print "<plan product=\"ald\" start=\"2003-01\"><tables>"
      Table("20000000000000000000000000000600", "db_income_range_cat3", 14)
      Table("21000000000000000000000000000600", "db_income_range_cat3_actual", 13)
      print "</tables></plan>"
    }'
}
