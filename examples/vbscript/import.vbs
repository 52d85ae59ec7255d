' Imports the accounts of a QuickBooks company into a plan file:
'
'     cscript import.vbs nursery.kpf
'
' Exit code 0: imported and saved. Exit code 1: failed, the plan is unchanged.
Option Explicit

' One table of the plan, as the component reads it.
Class PlanTable
  Public Element
  Public Function Serialize()
    Serialize = Element.xml
  End Function
End Class

' All tables of the plan: the component reads them by id and returns the changed ones as one document.
Class PlanTables
  Public Document
  Public Function tables(id)
    Set tables = New PlanTable
    Set tables.Element = Find(id)
  End Function
  Public Sub Deserialize(text)
    Dim changed, table
    Set changed = NewDocument()
    If Not changed.loadXML(text) Then Exit Sub
    For Each table In changed.selectNodes("//tableitem")
      ReplaceIn Find(table.getAttribute("id")), table, "lastsavedid"
      ReplaceIn Find(table.getAttribute("id")), table, "tableblocks"
    Next
  End Sub
  Private Function Find(id)
    Set Find = Document.selectSingleNode("/plan/tables/tableitem[@id='" & id & "']")
    If Find Is Nothing Then Err.Raise 9
  End Function
  Private Sub ReplaceIn(table, changed, name)
    table.replaceChild changed.selectSingleNode(name).cloneNode(True), table.selectSingleNode(name)
  End Sub
End Class

Class Plan
  Public Data
  Public Function OpenPlan(file)
    Set Data = New PlanTables
    Set Data.Document = NewDocument()
    OpenPlan = Data.Document.load(CStr(file))
  End Function
End Class

Function NewDocument()
  Set NewDocument = WScript.CreateObject("MSXML2.DOMDocument.6.0")
  NewDocument.async = False
  NewDocument.preserveWhiteSpace = True
  NewDocument.setProperty "SelectionLanguage", "XPath"
End Function

Dim exchange, file
file = WScript.Arguments(0)
Set exchange = WScript.CreateObject("KRN6_QB2002.QBDataExchange")
Set exchange.KRNPlanData = New Plan
If Not exchange.KRNOpenPlan(file) Then
  WScript.Echo "There is no plan " & file
  WScript.Quit 1
End If

exchange.KRNProduct = 1              ' QBKRN_ALD
exchange.KRNStartingYear = 2003
exchange.KRNStartingMonth = 1
exchange.BalancesImport = 0          ' BalImport_None: accounts without amounts
exchange.IncludeExpenseAccounts = True
exchange.IncludeIncomeAccounts = True
If Not exchange.Go Or exchange.ErrorNumber <> 0 Then
  WScript.Echo "Not imported: " & exchange.ErrorDescription
  WScript.Quit 1
End If

exchange.KRNPlanData.Data.Document.save CStr(file)
WScript.Echo "The accounts of " & exchange.QBCompany & " are in " & file
WScript.Quit 0
