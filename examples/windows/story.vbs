' What a script does with the components, from registration to removal:
'
'   cscript //nologo story.vbs COMPANY ENGINE [register]
'
' COMPANY is a company file with the sample (quoracc company create FILE --sample), ENGINE is 0 for the
' server's dialect or 1 for the desktop's. With "register" the DLLs beside this script are registered
' first and removed at the end.
Option Explicit

Dim company, engine, folder, registers
If WScript.Arguments.Count < 2 Then
  WScript.Echo "usage: cscript //nologo story.vbs COMPANY 0|1 [register]"
  WScript.Quit 2
End If
company = WScript.Arguments(0)
engine = CInt(WScript.Arguments(1))
registers = WScript.Arguments.Count > 2
folder = Left(WScript.ScriptFullName, InStrRev(WScript.ScriptFullName, "\"))

If registers Then
  RunHidden "regsvr32 /s """ & folder & "QuorDataLib.dll"""
  RunHidden "regsvr32 /s """ & folder & "QuorAccQueries.dll"""
End If

Dim data, host, root
Set data = CreateObject("QuorDataLib.Application")
data.OpenCompany company, engine
Set host = CreateObject("QuorAccQueries.CThreadHost")
Set root = CreateObject("QuorAccQueries.CQueries")
Set root.CustomConnection = data.Connection

Aging
Numbers
Records
Lists
Outputs
Errors
AfterClosing

' Everything is let go of before the DLLs are removed.
Set root = Nothing
WScript.Echo "objects held: " & host.LiveObjects
Set host = Nothing
WScript.Echo "objects held of the host: " & data.LiveObjects
Set data = Nothing

If registers Then
  RunHidden "regsvr32 /s /u """ & folder & "QuorAccQueries.dll"""
  RunHidden "regsvr32 /s /u """ & folder & "QuorDataLib.dll"""
End If

' The aging of all customers, row by row: amounts are currencies, dates are dates.
Sub Aging()
  Dim rows, count
  Set rows = root.Customer.OpenCustAgingTransactions(True, 0, #6/30/2025#, "", "", "", "", False, False)
  count = 0
  Do Until rows.AtEnd
    WScript.Echo "aging," & rows.Field("InInvoiId") & "," & DayText(rows.Field("InvoiDate")) & "," & _
                 rows.Field("Balance")
    If count = 0 Then
      WScript.Echo "types: " & TypeName(rows.Field("InInvoiId")) & " " & _
                   TypeName(rows.Field("InvoiDate")) & " " & TypeName(rows.Field("Balance"))
    End If
    count = count + 1
    rows.MoveNext
  Loop
  rows.Close
  WScript.Echo "aging rows: " & count
End Sub

Function DayText(value)
  DayText = Year(value) & "-" & Right("0" & Month(value), 2) & "-" & Right("0" & Day(value), 2)
End Function

' Single values. An argument that is left out (a gap) has its type's empty value.
Sub Numbers()
  Dim cost, balance
  cost = root.GetNewInventoryHelper.GetAvgCostRange(1, #6/30/2025#, , , "", False)
  WScript.Echo "average cost: " & TypeName(cost) & " " & cost
  balance = root.GetNewGeneralLedgerHelper.GetAcctBalance(1200, 0, 0, #6/30/2025#, 0, False, 0, 0, False, "")
  WScript.Echo "account balance: " & TypeName(balance) & " " & balance
  WScript.Echo "due date: " & DayText(root.GetNewTermHelper.GetDueDate(1, #3/15/2025#))
  WScript.Echo "customer balance: " & root.GetNewCustomerHelper.GetCustBalance(3, #6/30/2025#)
End Sub

' A value record.
Sub Records()
  Dim payment
  Set payment = root.GetNewCustomerHelper.GetLastPmtInfo(3)
  WScript.Echo "last payment: " & DayText(payment.LastPmtDate) & " " & payment.LastPmtAmnt & " " & _
               payment.LastPmtType
End Sub

' A collection.
Sub Lists()
  Dim account, accounts
  Set accounts = root.GetNewInventoryHelper.GetInventoryGLAccounts
  For Each account In accounts
    WScript.Echo "inventory account: " & TypeName(account) & " " & account
  Next
  WScript.Echo "accounts: " & accounts.Count & ", first " & accounts(1)
End Sub

' Arguments that the member writes.
Sub Outputs()
  Dim account, code, rate
  root.GetNewGeneralLedgerHelper.FindInfoForTaxCode 1, account, code, rate
  Dim known, frequency, lastRun, nextRun
  known = root.GetNewTrxRecHelper.GetTrxRecInfo(1, 23, frequency, lastRun, nextRun)
  WScript.Echo "recurring: " & known & " " & frequency & " " & DayText(lastRun) & " " & DayText(nextRun)
  WScript.Echo "tax code: " & account & " " & code & " " & rate
End Sub

' What the error service raises arrives with number, source and text.
Sub Errors()
  On Error Resume Next
  root.Customer.OpenCustAgingTransactions True, 0, #6/30/2025#, " AND Nowhere = 1", "", "", "", False, False
  WScript.Echo "error " & Hex(Err.Number) & ": " & Err.Description
  WScript.Echo "source: " & Left(Err.Source, 62)
  Err.Clear
  root.Customer.NoSuchMember
  WScript.Echo "unknown member: " & Err.Number
  Err.Clear
  root.Customer.OpenCustOpenCredits
  WScript.Echo "missing argument: " & Err.Number
  Err.Clear
  root.Customer.OpenCustOpenCredits "no number"
  WScript.Echo "wrong type: " & Err.Number
  Err.Clear
  root.Customer.OpenCustOpenCredits 5E9
  WScript.Echo "overflow: " & Err.Number
End Sub

' Who asks for a company that was closed is told so.
Sub AfterClosing()
  data.CloseCompany
  On Error Resume Next
  CreateObject("QuorAccQueries.CQueries").Customer.OpenCustOpenCredits 3
  WScript.Echo "after closing: " & Err.Number
End Sub

Sub RunHidden(command)
  Dim code
  code = CreateObject("WScript.Shell").Run(command, 0, True)
  If code <> 0 Then
    WScript.Echo command & " has ended with " & code
    WScript.Quit 1
  End If
End Sub
