<#
.SYNOPSIS
Removes ORL2FCOE: from WMI, from COM, its registry keys and its files.

.DESCRIPTION
May be run again when it could not remove everything, and where nothing is installed.

.PARAMETER Destination
Folder of the programs, as it was given to install.ps1.

.PARAMETER Data
Folder of the inventory, of its state file and of the trace log, as it was given to install.ps1.

.PARAMETER RemoveData
Removes that folder too.
#>
param(
    [string] $Destination = (Join-Path $env:ProgramFiles 'KESTA\ORL2'),
    [string] $Data = (Join-Path $env:ProgramData 'KESTA\ORL2'),
    [switch] $RemoveData
)

. (Join-Path $PSScriptRoot 'Common.ps1')
Assert-Administrator
$Destination = Resolve-Folder $Destination
$Data = Resolve-Folder $Data

$failed = $false

# One part of the removal; the others go on when it fails.
function Invoke-Part([string] $what, [scriptblock] $part) {
    try {
        & $part
    }
    catch {
        Write-Host "${what}: $($_.Exception.Message)"
        $script:failed = $true
    }
}

# What the service puts into every namespace, beside the classes that begin with two underscores.
$ofTheService = @('CIM_Error', 'CIM_Indication', 'MSFT_ExtendedStatus', 'MSFT_WmiError') +
    @('Class', 'Inst' | ForEach-Object { "CIM_${_}Creation", "CIM_${_}Deletion", "CIM_${_}Indication", "CIM_${_}Modification" })

# The namespace goes with the last class that is not the service's own.
function Remove-EmptyNamespace {
    $namespace = Get-CimInstance -Namespace root -ClassName __NAMESPACE -Filter "Name='KESTA'"
    $others = Get-CimClass -Namespace root/KESTA |
        Where-Object { $_.CimClassName -notlike '__*' -and $ofTheService -notcontains $_.CimClassName }
    if ($namespace -and -not $others) {
        $namespace | Remove-CimInstance
    }
}

function Remove-Key([string] $subkey) {
    $key = "HKLM:\$subkey"
    if (Test-Path -LiteralPath $key) {
        Remove-Item -LiteralPath $key -Recurse
    }
    $above = Split-Path -Parent $key
    while ($above -ne 'HKLM:\SOFTWARE' -and (Test-Path -LiteralPath $above)) {
        $item = Get-Item -LiteralPath $above
        if ($item.SubKeyCount -ne 0 -or $item.ValueCount -ne 0) {
            break
        }
        Remove-Item -LiteralPath $above
        $above = Split-Path -Parent $above
    }
}

function Remove-Folder([string] $folder) {
    if (Test-Path -LiteralPath $folder) {
        Remove-Item -LiteralPath $folder -Recurse
    }
    $above = Split-Path -Parent $folder
    if ((Split-Path -Leaf $above) -eq 'KESTA' -and (Test-Path -LiteralPath $above) -and
        -not (Get-ChildItem -LiteralPath $above -Force)) {
        Remove-Item -LiteralPath $above
    }
}

$steps = @(Read-Steps (Join-Path $PSScriptRoot 'installation.txt') $Destination $Data)
Invoke-Part 'The classes could not be removed from WMI' {
    if (Get-CimInstance -Namespace root -ClassName __NAMESPACE -Filter "Name='KESTA'") {
        Invoke-Mofcomp (Join-Path $PSScriptRoot 'unregister.mof')
        Remove-EmptyNamespace
    }
}
Invoke-Part 'The provider is still running' { Stop-ProviderHost }
foreach ($step in $steps) {
    switch ($step[0]) {
        'register' {
            Invoke-Part "$($step[1]) could not be unregistered" {
                if (Test-Path -LiteralPath $step[1]) {
                    Invoke-Regsvr32 @('/s', '/u', $step[1])
                }
            }
        }
        'own' { Invoke-Part "The registry key $($step[1]) could not be removed" { Remove-Key $step[1] } }
    }
}
Invoke-Part "$Destination could not be removed" { Remove-Folder $Destination }
if ($RemoveData) {
    Invoke-Part "$Data could not be removed" { Remove-Folder $Data }
}
elseif (Test-Path -LiteralPath $Data) {
    Write-Host "The inventory and logs stay in $Data; -RemoveData removes them."
}
if ($failed) {
    exit 2
}
Write-Host 'ORL2FCOE is removed.'
