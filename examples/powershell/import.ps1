# NOT RUN HERE. Wine's PowerShell does nothing, so no test of this project runs this example.
#
# Imports the accounts of a QuickBooks company into a plan file, with the plan and the progress of the C# example. Use the
# Windows PowerShell whose width is that of the registered library; for 32 bit that is
# %SystemRoot%\SysWOW64\WindowsPowerShell\v1.0\powershell.exe.
#
#     powershell -STA -File import.ps1 nursery.kpf
#
# Exit code 0: imported and saved. Exit code 1: failed, the plan file is unchanged.
param([Parameter(Mandatory)] [string] $File)
$ErrorActionPreference = 'Stop'
Add-Type -Path "$PSScriptRoot\..\csharp\Plan.cs", "$PSScriptRoot\..\csharp\Progress.cs" -ReferencedAssemblies System.Xml

$path = (Resolve-Path $File).Path
$plan = New-Object Krnqb.Example.Plan
$exchange = $null
$progress = $null
try {
    $exchange = New-Object -ComObject KRN6_QB2002.QBDataExchange
    $exchange.KRNPlanData = $plan
    [void] $exchange.KRNOpenPlan($path)
    $exchange.KRNProduct = 1              # QBKRN_ALD
    $exchange.KRNStartingYear = 2003
    $exchange.KRNStartingMonth = 1
    $exchange.BalancesImport = 0          # BalImport_None: accounts without amounts
    $exchange.IncludeExpenseAccounts = $true
    $exchange.IncludeIncomeAccounts = $true
    $progress = New-Object Krnqb.Example.Progress $exchange
    # Go returns true even if the import failed: the error is in the pair.
    if (-not $exchange.Go() -or $exchange.ErrorNumber -ne 0) {
        throw "$($exchange.ErrorDescription) (error $($exchange.ErrorNumber))"
    }
    $plan.Save($path)
    Write-Output "The accounts are in $File"
}
catch {
    Write-Output "Not imported: $($_.Exception.Message)"
    exit 1
}
finally {
    if ($progress) { $progress.Dispose() }
    # The component and the plan hold references to each other until the component lets go of the plan.
    if ($exchange) { $exchange.KRNPlanData = $null }
}
