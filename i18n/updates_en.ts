<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>vg::net::StartupClient</name>
    <message>
        <source>Connecting to update server...</source>
        <translation>Connecting to update server...</translation>
    </message>
    <message>
        <source>Latest build: %1</source>
        <translation>Latest build: %1</translation>
    </message>
    <message>
        <source>Mandatory update. Latest build: %1</source>
        <translation>Mandatory update. Latest build: %1</translation>
    </message>
    <message>
        <source>Startup API: Connected</source>
        <translation>Startup API: Connected</translation>
    </message>
    <message>
        <source>Startup API: Connecting</source>
        <translation>Startup API: Connecting</translation>
    </message>
    <message>
        <source>Startup API: Invalid JSON</source>
        <translation>Startup API: Invalid JSON</translation>
    </message>
    <message>
        <source>Startup API: Invalid Update URL</source>
        <translation>Startup API: Invalid Update URL</translation>
    </message>
    <message>
        <source>Startup API: Offline</source>
        <translation>Startup API: Offline</translation>
    </message>
    <message>
        <source>Startup API: Rejected</source>
        <translation>Startup API: Rejected</translation>
    </message>
    <message>
        <source>Startup API: Unauthorized</source>
        <translation>Startup API: Unauthorized</translation>
    </message>
    <message>
        <source>Startup API: Update Available</source>
        <translation>Startup API: Update Available</translation>
    </message>
    <message>
        <source>Startup API: Update Missing File</source>
        <translation>Startup API: Update Missing File</translation>
    </message>
    <message>
        <source>Update check returned invalid JSON.</source>
        <translation>Update check returned invalid JSON.</translation>
    </message>
    <message>
        <source>Update check was rejected.</source>
        <translation>Update check was rejected.</translation>
    </message>
    <message>
        <source>Update is available, but the server response has no downloadUrl.</source>
        <translation>Update is available, but the server response has no downloadUrl.</translation>
    </message>
</context>
<context>
    <name>vg::net::UpdateDownloader</name>
    <message>
        <source>Could not create a temporary directory for the update.</source>
        <translation>Could not create a temporary directory for the update.</translation>
    </message>
    <message>
        <source>Could not finalize the update file: %1</source>
        <translation>Could not finalize the update file: %1</translation>
    </message>
    <message>
        <source>Could not verify the update checksum.</source>
        <translation>Could not verify the update checksum.</translation>
    </message>
    <message>
        <source>Could not write update file: %1</source>
        <translation>Could not write update file: %1</translation>
    </message>
    <message>
        <source>Download complete.</source>
        <translation>Download complete.</translation>
    </message>
    <message>
        <source>Mandatory update downloaded.</source>
        <translation>Mandatory update downloaded.</translation>
    </message>
    <message>
        <source>Update checksum mismatch.</source>
        <translation>Update checksum mismatch.</translation>
    </message>
    <message>
        <source>Update download canceled.</source>
        <translation>Update download canceled.</translation>
    </message>
    <message>
        <source>Update download failed: %1</source>
        <translation>Update download failed: %1</translation>
    </message>
</context>
<context>
    <name>UpdateApplier</name>
    <message>
        <source>Could not create a temporary directory for the update.</source>
        <translation>Could not create a temporary directory for the update.</translation>
    </message>
    <message>
        <source>Could not write update file: %1</source>
        <translation>Could not write update file: %1</translation>
    </message>
    <message>
        <source>Current executable path could not be found.</source>
        <translation>Current executable path could not be found.</translation>
    </message>
    <message>
        <source>Downloaded update file is missing.</source>
        <translation>Downloaded update file is missing.</translation>
    </message>
    <message>
        <source>Installer updates are not supported on this system.</source>
        <translation>Installer updates are not supported on this system.</translation>
    </message>
    <message>
        <source>Package is empty.</source>
        <translation>Package is empty.</translation>
    </message>
    <message>
        <source>Package updater process could not be started.</source>
        <translation>Package updater process could not be started.</translation>
    </message>
    <message>
        <source>Package updates must be ZIP files.</source>
        <translation>Package updates must be ZIP files.</translation>
    </message>
    <message>
        <source>Updater process could not be started.</source>
        <translation>Updater process could not be started.</translation>
    </message>
</context>
<context>
    <name>UpdateController</name>
    <message>
        <source>A new update is available.</source>
        <translation>A new update is available.</translation>
    </message>
    <message>
        <source>Applying update. The application will restart automatically.</source>
        <translation>Applying update. The application will restart automatically.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Connecting to update server...</source>
        <translation>Connecting to update server...</translation>
    </message>
    <message>
        <source>Downloading update... %1%</source>
        <translation>Downloading update... %1%</translation>
    </message>
    <message>
        <source>Latest build: %1</source>
        <translation>Latest build: %1</translation>
    </message>
    <message>
        <source>Mandatory Update</source>
        <translation>Mandatory Update</translation>
    </message>
    <message>
        <source>Mandatory update found. Downloading automatically...</source>
        <translation>Mandatory update found. Downloading automatically...</translation>
    </message>
    <message>
        <source>No release notes.</source>
        <translation>No release notes.</translation>
    </message>
    <message>
        <source>Startup API: Applying Package</source>
        <translation>Startup API: Applying Package</translation>
    </message>
    <message>
        <source>Startup API: Applying Update</source>
        <translation>Startup API: Applying Update</translation>
    </message>
    <message>
        <source>Startup API: Update Failed</source>
        <translation>Startup API: Update Failed</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Update</translation>
    </message>
    <message>
        <source>Update Available</source>
        <translation>Update Available</translation>
    </message>
    <message>
        <source>Update apply canceled.</source>
        <translation>Update apply canceled.</translation>
    </message>
    <message>
        <source>Update skipped. Current build: %1, server build: %2</source>
        <translation>Update skipped. Current build: %1, server build: %2</translation>
    </message>
</context>
<context>
    <name>UpdateDialog</name>
    <message>
        <source>%1 MB (%2 bytes)</source>
        <translation>%1 MB (%2 bytes)</translation>
    </message>
    <message>
        <source>Channel: %1</source>
        <translation>Channel: %1</translation>
    </message>
    <message>
        <source>Check Now</source>
        <translation>Check Now</translation>
    </message>
    <message>
        <source>Check updates on startup</source>
        <translation>Check updates on startup</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>Current Build</source>
        <translation>Current Build</translation>
    </message>
    <message>
        <source>Current build: %1</source>
        <translation>Current build: %1</translation>
    </message>
    <message>
        <source>Download &amp;&amp; Update</source>
        <translation>Download &amp;&amp; Update</translation>
    </message>
    <message>
        <source>File: %1</source>
        <translation>File: %1</translation>
    </message>
    <message>
        <source>Latest build: %1</source>
        <translation>Latest build: %1</translation>
    </message>
    <message>
        <source>No release notes.</source>
        <translation>No release notes.</translation>
    </message>
    <message>
        <source>Published: %1</source>
        <translation>Published: %1</translation>
    </message>
    <message>
        <source>Reason: %1</source>
        <translation>Reason: %1</translation>
    </message>
    <message>
        <source>Release notes:</source>
        <translation>Release notes:</translation>
    </message>
    <message>
        <source>Server Build</source>
        <translation>Server Build</translation>
    </message>
    <message>
        <source>Size: %1</source>
        <translation>Size: %1</translation>
    </message>
    <message>
        <source>Status: No update available</source>
        <translation>Status: No update available</translation>
    </message>
    <message>
        <source>Status: Update available</source>
        <translation>Status: Update available</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Update</translation>
    </message>
    <message>
        <source>Update Type</source>
        <translation>Update Type</translation>
    </message>
    <message>
        <source>Update type: %1</source>
        <translation>Update type: %1</translation>
    </message>
    <message>
        <source>VantreoGuide update</source>
        <translation>VantreoGuide update</translation>
    </message>
    <message>
        <source>When enabled, startup update checks ask before downloading and applying available updates.</source>
        <translation>When enabled, startup update checks ask before downloading and applying available updates.</translation>
    </message>
</context>
</TS>
