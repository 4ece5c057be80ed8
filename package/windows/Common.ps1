# What install.ps1 and uninstall.ps1 share.

$ErrorActionPreference = 'Stop'

# Ends the script with advice when it cannot do its work as it was started.
function Assert-Administrator {
    $me = New-Object Security.Principal.WindowsPrincipal ([Security.Principal.WindowsIdentity]::GetCurrent())
    if (-not $me.IsInRole([Security.Principal.WindowsBuiltInRole]::Administrator)) {
        Write-Host 'This needs administrator rights: start PowerShell with "Run as administrator" and try again.'
        Write-Host 'Nothing has been changed.'
        exit 1
    }
    if (-not [Environment]::Is64BitProcess) {
        Write-Host 'This is a 32-bit PowerShell, whose registry is another: start the 64-bit one and try again.'
        Write-Host 'Nothing has been changed.'
        exit 1
    }
}

# The steps of installation.txt: each an array of fields, with the two folders filled in.
function Read-Steps([string] $file, [string] $dir, [string] $data) {
    foreach ($line in Get-Content -LiteralPath $file) {
        if ($line -ne '' -and -not $line.StartsWith('#')) {
            , ($line.Replace('{dir}', $dir).Replace('{data}', $data).Split('|'))
        }
    }
}

# A folder that was given relative to where the user is, as the registry needs it.
function Resolve-Folder([string] $path) {
    $ExecutionContext.SessionState.Path.GetUnresolvedProviderPathFromPSPath($path)
}

# Runs a program of Windows; its output is shown when it fails. What tells is its exit code: with 'Stop' a line that it
# writes to its error output would end the script.
function Invoke-Program([string] $program, [string[]] $arguments) {
    $ErrorActionPreference = 'Continue'
    $path = Join-Path $env:SystemRoot $program
    $output = & $path $arguments 2>&1 | Out-String
    if ($LASTEXITCODE -ne 0) {
        throw "$path $arguments failed with $LASTEXITCODE`r`n$output"
    }
}

# regsvr32 is a program with windows, which PowerShell does not wait for by itself.
function Invoke-Regsvr32([string[]] $arguments) {
    $quoted = $arguments | ForEach-Object { if ($_ -match ' ') { "`"$_`"" } else { $_ } }
    $process = Start-Process -FilePath (Join-Path $env:SystemRoot 'System32\regsvr32.exe') -ArgumentList $quoted -Wait -PassThru
    if ($process.ExitCode -ne 0) {
        throw "regsvr32 $quoted failed with $($process.ExitCode)"
    }
}

function Invoke-Mofcomp([string] $file) {
    Invoke-Program 'System32\wbem\mofcomp.exe' @($file)
}

# Whether a process holds the provider's library. One that ends meanwhile, or does not tell, holds nothing of ours.
function Test-ProviderHost([Diagnostics.Process] $process) {
    try {
        $process.Modules.ModuleName -contains 'Orl2InstUtility.dll'
    }
    catch {
        $false
    }
}

# Ends the processes of the WMI service that hold the provider's library, which could not be replaced otherwise, and waits
# for their end. The service starts them again with the next request.
function Stop-ProviderHost {
    $hosts = @(Get-Process -Name WmiPrvSE -ErrorAction SilentlyContinue | Where-Object { Test-ProviderHost $_ })
    if ($hosts.Count -gt 0) {
        $hosts | Stop-Process -Force
        $hosts | Wait-Process -Timeout 30
    }
}
