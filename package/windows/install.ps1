<#
.SYNOPSIS
Installs ORL2FCOE: copies it, writes its registry keys, and registers the provider with COM and WMI.

.DESCRIPTION
Run it again to repair or to upgrade: values that administrators set, and the inventory, stay. When a step fails, the
steps before it are undone.

.PARAMETER Destination
Folder of the programs.

.PARAMETER Data
Folder of the inventory, of its state file and of the trace log.
#>
param(
    [string] $Destination = (Join-Path $env:ProgramFiles 'KESTA\ORL2'),
    [string] $Data = (Join-Path $env:ProgramData 'KESTA\ORL2')
)

. (Join-Path $PSScriptRoot 'Common.ps1')
Assert-Administrator
$Destination = Resolve-Folder $Destination
$Data = Resolve-Folder $Data

# What undoes the steps done so far, the last one first: each an array of the action and what it takes.
$undo = New-Object System.Collections.Stack

# A file, or a folder or key without anything below it: what others have put there stays, and nobody is asked.
function Remove-One([string] $path) {
    if (-not (Test-Path -LiteralPath $path)) {
        return
    }
    if ((Test-Path -LiteralPath $path -PathType Container) -and (Get-ChildItem -LiteralPath $path -Force)) {
        throw "$path is not empty"
    }
    Remove-Item -LiteralPath $path -Force
}

function Undo-Step([object[]] $action) {
    switch ($action[0]) {
        'remove' { Remove-One $action[1] }
        'move' { Move-Item -LiteralPath $action[1] -Destination $action[2] -Force }
        'value' { New-ItemProperty -LiteralPath $action[1] -Name $action[2] -Value $action[3] -PropertyType $action[4] -Force | Out-Null }
        'no value' { Remove-ItemProperty -LiteralPath $action[1] -Name $action[2] }
        'unregister' { Invoke-Regsvr32 @('/s', '/u', $action[1]) }
        'mof' { Invoke-Mofcomp $action[1] }
        'old classes' { Step-Mof $action[1] }
    }
}

function New-Folder([string] $path) {
    $missing = New-Object System.Collections.Stack
    for ($at = $path; $at -and -not (Test-Path -LiteralPath $at); $at = Split-Path -Parent $at) {
        $missing.Push($at)
    }
    while ($missing.Count -gt 0) {
        $folder = $missing.Pop()
        New-Item -ItemType Directory -Path $folder | Out-Null
        $undo.Push(@('remove', $folder))
    }
}

function Copy-One([string] $from, [string] $to) {
    if (Test-Path -LiteralPath $to) {
        $old = "$to.previous"
        Move-Item -LiteralPath $to -Destination $old -Force
        $undo.Push(@('move', $old, $to))
    }
    else {
        $undo.Push(@('remove', $to))
    }
    Copy-Item -LiteralPath $from -Destination $to
}

function Step-Copy([string] $from, [string] $to) {
    New-Folder $to
    Get-ChildItem -Path (Join-Path $PSScriptRoot $from) -File | ForEach-Object {
        Copy-One $_.FullName (Join-Path $to $_.Name)
    }
}

function Step-Keep([string] $from, [string] $to) {
    New-Folder (Split-Path -Parent $to)
    if (-not (Test-Path -LiteralPath $to)) {
        Copy-One (Join-Path $PSScriptRoot $from) $to
    }
}

function New-Key([string] $key) {
    if (-not (Test-Path -LiteralPath $key)) {
        New-Key (Split-Path -Parent $key)
        New-Item -Path $key | Out-Null
        $undo.Push(@('remove', $key))
    }
}

function Step-Value([string] $subkey, [string] $name, [string] $type, [string] $value, [string] $when) {
    $key = "HKLM:\$subkey"
    New-Key $key
    $item = Get-Item -LiteralPath $key
    if ($item.GetValueNames() -contains $name) {
        if ($when -eq 'keep') {
            return
        }
        $old = $item.GetValue($name, $null, [Microsoft.Win32.RegistryValueOptions]::DoNotExpandEnvironmentNames)
        $kind = $item.GetValueKind($name)
        $undo.Push(@('value', $key, $name, $old, $kind))
    }
    else {
        $undo.Push(@('no value', $key, $name))
    }
    New-ItemProperty -LiteralPath $key -Name $name -Value $value -PropertyType $type -Force | Out-Null
}

function Step-Register([string] $library) {
    if (-not $installedBefore) {
        $undo.Push(@('unregister', $library))
    }
    Invoke-Regsvr32 @('/s', $library)
}

function Step-Mof([string] $files) {
    if (-not $installedBefore) {
        $undo.Push(@('mof', (Join-Path $PSScriptRoot 'unregister.mof')))
    }
    Get-ChildItem -Path $files -File | Sort-Object Name | ForEach-Object { Invoke-Mofcomp $_.FullName }
}

$installedBefore = Test-Path -LiteralPath (Join-Path $Destination 'Orl2InstUtility.dll')
if ($installedBefore) {
    # Last of all, when the old files are back: the registration is still theirs, the classes may not be.
    $undo.Push(@('old classes', (Join-Path $Destination 'schema\*.mof')))
}
try {
    Stop-ProviderHost
    foreach ($step in Read-Steps (Join-Path $PSScriptRoot 'installation.txt') $Destination $Data) {
        switch ($step[0]) {
            'copy' { Step-Copy $step[1] $step[2] }
            'keep' { Step-Keep $step[1] $step[2] }
            'value' { Step-Value $step[1] $step[2] $step[3] $step[4] $step[5] }
            'register' { Step-Register $step[1] }
            'mof' { Step-Mof $step[1] }
            'own' { }
            default { throw "installation.txt has a step $($step[0]) that is not known" }
        }
    }
    # The provider runs as the network service; it keeps the inventory's state and the trace log there.
    Invoke-Program 'System32\icacls.exe' @($Data, '/grant', '*S-1-5-20:(OI)(CI)M', '/Q')
}
catch {
    Write-Host "The installation failed: $($_.Exception.Message)"
    $left = $false
    while ($undo.Count -gt 0) {
        try {
            Undo-Step ($undo.Pop())
        }
        catch {
            Write-Host "This could not be undone: $($_.Exception.Message)"
            $left = $true
        }
    }
    if (-not $left) {
        Write-Host 'What had been done is undone.'
    }
    exit 2
}

# One that is still in use goes with the next installation.
Get-ChildItem -LiteralPath $Destination -Recurse -Filter '*.previous' | Remove-Item -ErrorAction SilentlyContinue
Write-Host "ORL2FCOE is installed in $Destination; its inventory is $(Join-Path $Data 'lab.json')."
Write-Host 'Try: Get-CimInstance -Namespace root/KESTA -ClassName Zarn_FCOEHBA'
