' Imports the accounts of a QuickBooks company into a plan file:
'
'     cscript import.vbs nursery.kpf
'
' Exit code 0: imported and saved. Exit code 1: failed, the plan file is unchanged.
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

' The component raises its events while Go runs.
Sub exchange_ProgressBarChange(percent, description)
  WScript.Echo percent & " % " & description
End Sub

' Returns an empty text if the import succeeded, otherwise the reason. May raise an error of the component, the plan or
' QuickBooks.
Function ImportInto(file)
  If Not exchange.KRNOpenPlan(file) Then
    ImportInto = "there is no plan " & file
    Exit Function
  End If
  exchange.KRNProduct = 1              ' QBKRN_ALD
  exchange.KRNStartingYear = 2003
  exchange.KRNStartingMonth = 1
  exchange.BalancesImport = 0          ' BalImport_None: accounts without amounts
  exchange.IncludeExpenseAccounts = True
  exchange.IncludeIncomeAccounts = True
  ' Go returns True even if the import failed: the error is in the pair ErrorNumber and ErrorDescription.
  If Not exchange.Go Or exchange.ErrorNumber <> 0 Then
    ImportInto = exchange.ErrorDescription & " (error " & exchange.ErrorNumber & ")"
    Exit Function
  End If
  exchange.KRNPlanData.Data.Document.save CStr(file)
End Function

Dim exchange, file, reason
file = CStr(WScript.Arguments(0))
Set exchange = WScript.CreateObject("KRN6_QB2002.QBDataExchange")
Set exchange.KRNPlanData = New Plan

On Error Resume Next
WScript.ConnectObject exchange, "exchange_"    ' a host that cannot connect events imports without progress
Err.Clear
reason = ImportInto(file)
If Err.Number <> 0 Then reason = Err.Description & " (error " & Err.Number & ")"
On Error GoTo 0

' The component and the plan hold references to each other until the component lets go of the plan.
Set exchange.KRNPlanData = Nothing
If reason <> "" Then
  WScript.Echo "Not imported: " & reason
  WScript.Quit 1
End If
WScript.Echo "The accounts are in " & file
WScript.Quit 0
