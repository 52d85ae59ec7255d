' usage: cscript //nologo import.vbs PLAN PRODUCT BALANCES MEMBERS CELLS EVENTS
'
' A host written in VBScript: supplies its own plan, imports, and writes the plan's cells and the events it received.
' MEMBERS selects how the plan exposes its members: "functions", "properties" or "collection".
Option Explicit

Dim arguments, plan, exchange, events, bridge
Set arguments = WScript.Arguments
Set plan = New HostPlan
plan.Load arguments(0), arguments(3)
Set events = New EventLog
events.Start arguments(5)

Set exchange = WScript.CreateObject("KRN6_QB2002.QBDataExchange")
' Wine's script host cannot connect events itself.
Set bridge = WScript.CreateObject("KRN6_TestBridge.EventBridge")
bridge.Connect exchange, events

exchange.QBCompany = "C:\Books\nursery.qbw"
Set exchange.KRNPlanData = plan.Members
exchange.KRNProduct = CInt(arguments(1))
exchange.IncludeExpenseAccounts = True
exchange.IncludeIncomeAccounts = True
exchange.IncludePastPerformance = True
exchange.BalancesImport = CInt(arguments(2))
If exchange.BalancesImport > 0 Then
  exchange.GrowthRateIncome = 10
  exchange.GrowthRateCOGS = 5
  exchange.GrowthRateExpenses = 3
End If
exchange.KRNStartingYear = 2003
exchange.KRNStartingMonth = 1
If exchange.KRNProduct = 2 Then SelectAllExpenses exchange.SelectedExpenses

Dim imported
imported = exchange.Go
bridge.Disconnect
events.Finish
plan.WriteCells arguments(4)
WScript.Echo "imported " & CStr(imported) & ", error " & exchange.ErrorNumber & " " & exchange.ErrorDescription
Set exchange.KRNPlanData = Nothing
WScript.Echo "end of import.vbs"
WScript.Quit 0

' The element is the component's own: changes to it need not be stored back.
Sub SelectAllExpenses(selection)
  Dim account
  For Each account In selection.childNodes
    If account.nodeType = 1 Then account.setAttribute "selected", "True"
  Next
End Sub

Function NewDocument()
  Set NewDocument = WScript.CreateObject("MSXML2.DOMDocument.6.0")
  NewDocument.async = False
  NewDocument.preserveWhiteSpace = True
  NewDocument.setProperty "SelectionLanguage", "XPath"
End Function

' The tables of a plan file, for all three kinds of members below.
Class PlanTables
  Public Document

  Public Function Element(id)
    Set Element = Document.selectSingleNode("/plan/tables/tableitem[@id=""" & id & """]")
    If Element Is Nothing Then Err.Raise 9
  End Function

  Public Sub Take(text)
    Dim changed, item
    Set changed = NewDocument()
    If changed.loadXML(text) Then
      For Each item In changed.selectNodes("//tableitem")
        TakeItem item, Element(item.getAttribute("id"))
      Next
    End If
  End Sub

  Private Sub TakeItem(from, into)
    into.replaceChild from.selectSingleNode("lastsavedid").cloneNode(True), into.selectSingleNode("lastsavedid")
    into.replaceChild from.selectSingleNode("tableblocks").cloneNode(True), into.selectSingleNode("tableblocks")
  End Sub
End Class

Class TableByFunction
  Public Element
  Public Function Serialize()
    Serialize = Element.xml
  End Function
End Class

Class DataByFunctions
  Public Own
  Public Function tables(id)
    Set tables = New TableByFunction
    Set tables.Element = Own.Element(id)
  End Function
  Public Function Deserialize(text)
    Own.Take text
    text = "taken"
    Deserialize = True
  End Function
End Class

Class PlanByFunctions
  Public Own
  Public Function Data()
    Set Data = New DataByFunctions
    Set Data.Own = Own
  End Function
End Class

Class TableByProperty
  Public Element
  Public Property Get Serialize()
    Serialize = Element.xml
  End Property
End Class

Class DataByProperties
  Public Own
  Public Property Get tables(id)
    Set tables = New TableByProperty
    Set tables.Element = Own.Element(id)
  End Property
  Public Sub Deserialize(ByVal text)
    Own.Take text
  End Sub
End Class

Class PlanByProperties
  Public Own
  Public Property Get Data()
    Set Data = New DataByProperties
    Set Data.Own = Own
  End Property
End Class

Class TableCollection
  Public Own
  Public Default Property Get Item(id)
    Set Item = New TableByFunction
    Set Item.Element = Own.Element(id)
  End Property
End Class

Class DataWithCollection
  Public Own
  Public tables
  Public Sub Deserialize(ByRef text)
    Own.Take text
  End Sub
End Class

Class PlanWithCollection
  Public Data
End Class

Class HostPlan
  Private tables
  Private kind

  Public Sub Load(path, members)
    Set tables = New PlanTables
    Set tables.Document = NewDocument()
    If Not tables.Document.load(CStr(path)) Then
      WScript.Echo "no plan: " & path
      WScript.Quit 1
    End If
    kind = members
  End Sub

  Public Function Members()
    Select Case kind
      Case "functions"
        Set Members = New PlanByFunctions
        Set Members.Own = tables
      Case "properties"
        Set Members = New PlanByProperties
        Set Members.Own = tables
      Case "collection"
        Set Members = New PlanWithCollection
        Set Members.Data = New DataWithCollection
        Set Members.Data.Own = tables
        Set Members.Data.tables = New TableCollection
        Set Members.Data.tables.Own = tables
    End Select
  End Function

  Public Sub WriteCells(path)
    Dim files, file, item, block
    Set files = WScript.CreateObject("Scripting.FileSystemObject")
    Set file = files.CreateTextFile(path, True, True)
    For Each item In tables.Document.selectNodes("/plan/tables/tableitem")
      For Each block In item.selectNodes("tableblocks/*")
        WriteBlock file, item.getAttribute("id") & vbTab & Escaped(block.getAttribute("id")), block
      Next
    Next
    file.Close
  End Sub

  Private Sub WriteBlock(file, place, block)
    Dim row, cell, rowNumber, column
    rowNumber = 0
    For Each row In block.selectNodes("*")
      column = 0
      For Each cell In row.selectNodes("*")
        file.Write place & vbTab & rowNumber & vbTab & column & vbTab & Escaped(cell.text) & vbLf
        column = column + 1
      Next
      rowNumber = rowNumber + 1
    Next
  End Sub

  Private Function Escaped(text)
    Escaped = Replace(Replace(text, "\", "\\"), vbTab, "\t")
    Escaped = Replace(Replace(Escaped, vbCr, "\r"), vbLf, "\n")
  End Function
End Class

' Records each event.
Class EventLog
  Private file

  Public Sub Start(path)
    Set file = WScript.CreateObject("Scripting.FileSystemObject").CreateTextFile(path, True)
  End Sub

  Public Sub Finish()
    file.Close
  End Sub

  Public Sub XMLprocessing(oXML)
    If oXML Is Nothing Then file.Write "XMLprocessing Nothing" & vbLf
    oXML = "left here"
  End Sub

  Public Sub TableModified(sTableID)
    file.Write "TableModified " & sTableID & vbLf
  End Sub

  Public Sub AfterImport()
    file.Write "AfterImport" & vbLf
  End Sub

  Public Sub ProgressBarChange(PercentValue, Description)
    file.Write "ProgressBarChange " & PercentValue & " " & Description & vbLf
  End Sub
End Class
