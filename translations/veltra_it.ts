<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="it">
<context>
    <name>DetectedSound</name>
    <message>
        <source>guitar</source>
        <translation>chitarra</translation>
    </message>
    <message>
        <source>violin</source>
        <translation>violino</translation>
    </message>
    <message>
        <source>piano</source>
        <translation>pianoforte</translation>
    </message>
    <message>
        <source>vocal</source>
        <translation>voce</translation>
    </message>
</context>
<context>
    <name>FrequencyPage</name>
    <message>
        <source>Reference A4 in hertz</source>
        <translation>Diapason A4 in hertz</translation>
    </message>
    <message>
        <source>Hz</source>
        <translation>Hz</translation>
    </message>
    <message>
        <source>Reset to 440 Hz</source>
        <translation>Ripristina 440 Hz</translation>
    </message>
    <message>
        <source>Stop Listening</source>
        <translation>Smetti di ascoltare</translation>
    </message>
    <message>
        <source>Listen for an A</source>
        <translation>Ascolta un la</translation>
    </message>
</context>
<context>
    <name>Input</name>
    <message>
        <source>System default</source>
        <translation>Predefinito di sistema</translation>
    </message>
    <message>
        <source>%1 (not connected)</source>
        <extracomment>%1 the chosen input&apos;s name on the sound server, which is not there now.</extracomment>
        <translation>%1 (non collegato)</translation>
    </message>
    <message>
        <source>The sound input the tuner listens to. While the chosen input is not connected, the tuner listens to the system default, and returns to the chosen one when it is back.</source>
        <translation>L’ingresso audio che l’accordatore ascolta. Finché l’ingresso scelto non è collegato, l’accordatore ascolta quello predefinito di sistema e torna a quello scelto quando è di nuovo presente.</translation>
    </message>
</context>
<context>
    <name>InputSection</name>
    <message>
        <source>Sound Input</source>
        <translation>Ingresso audio</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Back</source>
        <translation>Indietro</translation>
    </message>
    <message>
        <source>Microphone access</source>
        <translation>Accesso al microfono</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Impostazioni</translation>
    </message>
    <message>
        <source>Back (Esc)</source>
        <translation>Indietro (Esc)</translation>
    </message>
    <message>
        <source>Settings (Ctrl+,)</source>
        <translation>Impostazioni (Ctrl+,)</translation>
    </message>
    <message>
        <source>More options</source>
        <translation>Altre opzioni</translation>
    </message>
    <message>
        <source>Enjoying Veltra?</source>
        <translation>Ti piace Veltra?</translation>
    </message>
    <message>
        <source>If Veltra helps you play in tune, a rating in your software centre helps other musicians find it.</source>
        <translation>Se Veltra ti aiuta a suonare intonato, una valutazione nel tuo centro software aiuterà altri musicisti a trovarlo.</translation>
    </message>
    <message>
        <source>Rate Veltra</source>
        <translation>Valuta Veltra</translation>
    </message>
    <message>
        <source>Not Now</source>
        <translation>Non ora</translation>
    </message>
</context>
<context>
    <name>Menu</name>
    <message>
        <source>Rate this App</source>
        <translation>Valuta l’app</translation>
    </message>
    <message>
        <source>More Apps</source>
        <translation>Altre app</translation>
    </message>
    <message>
        <source>Share this App</source>
        <translation>Condividi l’app</translation>
    </message>
    <message>
        <source>Contact Us</source>
        <translation>Contattaci</translation>
    </message>
    <message>
        <source>I&apos;ve been using this great instrument tuner app by %1 called Veltra for iOS. Check it out! #tuner #ios</source>
        <extracomment>What a user shares about the app; %1 is the makers&apos; social-media handle.</extracomment>
        <translation>Sto usando Veltra, un’ottima app accordatore per strumenti di %1 per iOS. Provala! #tuner #ios</translation>
    </message>
    <message>
        <source>Email Unavailable</source>
        <translation>Email non disponibile</translation>
    </message>
    <message>
        <source>You cannot send emails from this device.</source>
        <translation>Non è possibile inviare email da questo dispositivo.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annulla</translation>
    </message>
</context>
<context>
    <name>MessageDialog</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>Picker</name>
    <message>
        <source>A₄ Frequency</source>
        <translation>Frequenza del A₄</translation>
    </message>
</context>
<context>
    <name>Readout</name>
    <message>
        <source>No note yet</source>
        <translation>Ancora nessuna nota</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <extracomment>The frequency heard, as &quot;440.5 Hz&quot;.</extracomment>
        <translation>%1 Hz</translation>
    </message>
    <message>
        <source>%1 sharp</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;C sharp&quot;; %1 is its letter.</extracomment>
        <translation>%1 diesis</translation>
    </message>
    <message>
        <source>%1 flat</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;B flat&quot;; %1 is its letter.</extracomment>
        <translation>%1 bemolle</translation>
    </message>
    <message>
        <source>in tune</source>
        <translation>intonato</translation>
    </message>
    <message>
        <source>%1 cents flat</source>
        <extracomment>How far below the note the pitch is; %1 is a number of cents, as &quot;2.0&quot;.</extracomment>
        <translation>%1 cent calante</translation>
    </message>
    <message>
        <source>%1 cents sharp</source>
        <extracomment>How far above the note the pitch is; %1 is a number of cents, as &quot;2.0&quot;.</extracomment>
        <translation>%1 cent crescente</translation>
    </message>
    <message>
        <source>%1 %2, %3, %4 hertz</source>
        <extracomment>The readout as a screen reader speaks it: %1 the note (&quot;A&quot;, &quot;C sharp&quot;), %2 its octave, %3 how far off it is (&quot;in tune&quot;, &quot;2.0 cents sharp&quot;), %4 the frequency (&quot;440.5&quot;).</extracomment>
        <translation>%1 %2, %3, %4 hertz</translation>
    </message>
    <message>
        <source>concert %1</source>
        <extracomment>Under a transposing instrument&apos;s written note, the concert note that sounds, as &quot;concert C4&quot;.</extracomment>
        <translation>suono reale %1</translation>
    </message>
    <message>
        <source>%1, concert %2 %3</source>
        <extracomment>The readout of a transposing instrument&apos;s written note, then the concert note that sounds: %1 the readout as above, %2 the concert note (&quot;C&quot;, &quot;B flat&quot;), %3 its octave.</extracomment>
        <translation>%1, suono reale %2 %3</translation>
    </message>
</context>
<context>
    <name>ReferenceCapture</name>
    <message>
        <source>Play an A and hold it for a second.</source>
        <translation>Suona un la e tienilo per un secondo.</translation>
    </message>
    <message>
        <source>Reference A set to %1 Hz.</source>
        <extracomment>%1 the new reference in whole hertz (&quot;441&quot;).</extracomment>
        <translation>La di riferimento impostato a %1 Hz.</translation>
    </message>
    <message>
        <source>The A heard is %1 Hz, outside 400 to 499 Hz: the reference stays.</source>
        <extracomment>%1 the A heard, in whole hertz (&quot;510&quot;); the reference is kept between 400 and 499 Hz.</extracomment>
        <translation>Il la sentito è a %1 Hz, fuori da 400–499 Hz: il riferimento resta invariato.</translation>
    </message>
    <message>
        <source>That note is %1 cents from an A. Play an A and try again.</source>
        <extracomment>%1 how far the steady note was from the nearest A, in cents (&quot;98.0&quot;).</extracomment>
        <translation>Questa nota è a %1 cent da un la. Suona un la e riprova.</translation>
    </message>
    <message>
        <source>No steady A heard. Play an A and hold it for a second.</source>
        <translation>Nessun la stabile sentito. Suona un la e tienilo per un secondo.</translation>
    </message>
</context>
<context>
    <name>ScalaImportButton</name>
    <message>
        <source>Choose a Scala File</source>
        <extracomment>The title of the file chooser that imports a scale.</extracomment>
        <translation>Scegli un file Scala</translation>
    </message>
    <message>
        <source>Scala scales (*.scl)</source>
        <extracomment>The file chooser&apos;s filters: Scala&apos;s scale files, then every file.</extracomment>
        <translation>Scale Scala (*.scl)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Tutti i file (*)</translation>
    </message>
</context>
<context>
    <name>ScreenSaver</name>
    <message>
        <source>Tuning</source>
        <translation>Accordatura in corso</translation>
    </message>
</context>
<context>
    <name>SelectSoundsPage</name>
    <message>
        <source>The readout follows the pitch only while one of the checked sounds is heard.</source>
        <translation>L’indicazione segue l’altezza solo mentre si sente uno dei suoni selezionati.</translation>
    </message>
</context>
<context>
    <name>Settings</name>
    <message>
        <source>The frequency of the A above middle C to be used as the reference for tuning.</source>
        <translation>La frequenza del A sopra il do centrale da usare come riferimento per accordare (diapason).</translation>
    </message>
    <message>
        <source>Display a sine tone generator in the main view.</source>
        <translation>Mostra un generatore di toni sinusoidali nella schermata principale.</translation>
    </message>
    <message>
        <source>When enabled, the screen turns green when in tune.</source>
        <translation>Se attivo, lo schermo diventa verde quando la nota è intonata.</translation>
    </message>
    <message>
        <source>When enabled, only the enharmonic sharps are displayed.</source>
        <translation>Se attivo, vengono mostrati solo i diesis enarmonici.</translation>
    </message>
    <message>
        <source>When enabled, the live graph is continuous. When disabled, the graph is plotted only when sound is detected, similar to the older versions of Veltra.</source>
        <translation>Se attivo, il grafico in tempo reale è continuo. Se disattivo, viene tracciato solo quando si rileva un suono, come nelle versioni precedenti di Veltra.</translation>
    </message>
    <message>
        <source>The width of the center green bar that is considered in tune.</source>
        <translation>La larghezza della fascia verde centrale considerata intonata.</translation>
    </message>
    <message>
        <source>A lower latency works great when you need faster pitch detection (e.g. vocal practice). By using a higher latency, pitch detection will not respond to momentary unintended sounds and noise (ideal for instrument tuning).</source>
        <translation>Una latenza bassa è ideale quando serve un rilevamento più rapido dell’altezza (ad es. esercizi di canto). Con una latenza più alta il rilevamento non reagisce a suoni momentanei indesiderati e ai rumori (ideale per accordare gli strumenti).</translation>
    </message>
    <message>
        <source>Highlights piano key corresponding to the current pitch.</source>
        <translation>Evidenzia il tasto del pianoforte corrispondente all’altezza attuale.</translation>
    </message>
    <message>
        <source>Thickness of the line used in the live pitch graph.</source>
        <translation>Spessore della linea del grafico dell’altezza in tempo reale.</translation>
    </message>
    <message>
        <source>This feature is very helpful for live situations where time needs to be kept track of.</source>
        <translation>Molto utile dal vivo, quando bisogna tenere d’occhio l’ora.</translation>
    </message>
    <message>
        <source>Use machine learning to enable pitch detection only when certain instruments or vocal sounds are detected.</source>
        <translation>Usa l’apprendimento automatico per rilevare l’altezza solo quando si sentono determinati strumenti o la voce.</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <extracomment>The reference frequency in whole hertz, as &quot;440 Hz&quot;.</extracomment>
        <translation>%1 Hz</translation>
    </message>
    <message>
        <source>Selected Sounds: %1.</source>
        <extracomment>%1 is the list of the sounds chosen, as &quot;Guitar and Piano&quot;.</extracomment>
        <translation>Suoni scelti: %1.</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Impostazioni</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>Reference A₄</source>
        <translation>Diapason A₄</translation>
    </message>
    <message>
        <source>Tone Generator</source>
        <translation>Generatore di toni</translation>
    </message>
    <message>
        <source>Green Overlay</source>
        <translation>Schermo verde</translation>
    </message>
    <message>
        <source>Sharps Only</source>
        <translation>Solo diesis</translation>
    </message>
    <message>
        <source>Continuous Display</source>
        <translation>Visualizzazione continua</translation>
    </message>
    <message>
        <source>In-Tune Bar</source>
        <translation>Fascia di intonazione</translation>
    </message>
    <message>
        <source>Wide ±15¢</source>
        <translation>Ampia ±15¢</translation>
    </message>
    <message>
        <source>Medium ±10¢</source>
        <translation>Media ±10¢</translation>
    </message>
    <message>
        <source>Narrow ±5¢</source>
        <translation>Stretta ±5¢</translation>
    </message>
    <message>
        <source>Wide, 15 cents either side</source>
        <translation>Ampia, 15 cent per lato</translation>
    </message>
    <message>
        <source>Medium, 10 cents either side</source>
        <translation>Media, 10 cent per lato</translation>
    </message>
    <message>
        <source>Narrow, 5 cents either side</source>
        <translation>Stretta, 5 cent per lato</translation>
    </message>
    <message>
        <source>Latency</source>
        <translation>Latenza</translation>
    </message>
    <message>
        <source>%1 s</source>
        <extracomment>A time in seconds, as &quot;0.25 s&quot;.</extracomment>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>Fast</source>
        <translation>Rapida</translation>
    </message>
    <message>
        <source>Steady</source>
        <translation>Stabile</translation>
    </message>
    <message>
        <source>Piano Keyboard</source>
        <translation>Tastiera del pianoforte</translation>
    </message>
    <message>
        <source>Line Thickness</source>
        <translation>Spessore della linea</translation>
    </message>
    <message>
        <source>Thin</source>
        <translation>Sottile</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>Spessa</translation>
    </message>
    <message>
        <source>Clock</source>
        <translation>Orologio</translation>
    </message>
    <message>
        <source>Sound Classification</source>
        <translation>Riconoscimento dei suoni</translation>
    </message>
    <message>
        <source>Select Sounds</source>
        <translation>Scegli i suoni</translation>
    </message>
</context>
<context>
    <name>ShareDialog</name>
    <message>
        <source>Share this App</source>
        <translation>Condividi l’app</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Chiudi</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>Copiato</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copia</translation>
    </message>
</context>
<context>
    <name>SoundList</name>
    <message>
        <source>Guitar</source>
        <translation>chitarra</translation>
    </message>
    <message>
        <source>Violin</source>
        <translation>violino</translation>
    </message>
    <message>
        <source>Piano</source>
        <translation>pianoforte</translation>
    </message>
    <message>
        <source>Voice</source>
        <translation>voce</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <extracomment>The last joint of a list of sounds: &quot;Guitar, Violin and Voice&quot;.</extracomment>
        <translation>%1 e %2</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <extracomment>Every other joint of a list of sounds: &quot;Guitar, Violin and Voice&quot;.</extracomment>
        <translation>%1, %2</translation>
    </message>
</context>
<context>
    <name>Sounds</name>
    <message>
        <source>Select Sounds</source>
        <translation>Scegli i suoni</translation>
    </message>
    <message>
        <source>Guitar</source>
        <translation>Chitarra</translation>
    </message>
    <message>
        <source>Violin</source>
        <translation>Violino</translation>
    </message>
    <message>
        <source>Piano</source>
        <translation>Pianoforte</translation>
    </message>
    <message>
        <source>Voice</source>
        <translation>Voce</translation>
    </message>
</context>
<context>
    <name>Temperament</name>
    <message>
        <source>Equal temperament</source>
        <translation>Temperamento equabile</translation>
    </message>
    <message>
        <source>Pythagorean</source>
        <translation>Pitagorico</translation>
    </message>
    <message>
        <source>Quarter-comma meantone</source>
        <translation>Mesotonico a 1/4 di comma</translation>
    </message>
    <message>
        <source>Sixth-comma meantone</source>
        <translation>Mesotonico a 1/6 di comma</translation>
    </message>
    <message>
        <source>Werckmeister III</source>
        <translation>Werckmeister III</translation>
    </message>
    <message>
        <source>Kirnberger III</source>
        <translation>Kirnberger III</translation>
    </message>
    <message>
        <source>Vallotti</source>
        <translation>Vallotti</translation>
    </message>
    <message>
        <source>Young (1799)</source>
        <translation>Young (1799)</translation>
    </message>
    <message>
        <source>Just intonation (5-limit)</source>
        <translation>Intonazione naturale (limite 5)</translation>
    </message>
    <message>
        <source>Imported scale</source>
        <translation>Scala importata</translation>
    </message>
</context>
<context>
    <name>ToneGenerator</name>
    <message>
        <source>%1 sharp</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;C sharp&quot;; %1 is its letter.</extracomment>
        <translation>%1 diesis</translation>
    </message>
    <message>
        <source>%1 flat</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;B flat&quot;; %1 is its letter.</extracomment>
        <translation>%1 bemolle</translation>
    </message>
    <message>
        <source>Play %1</source>
        <extracomment>A reference-tone button as a screen reader names it; %1 is the note, as &quot;C sharp&quot;.</extracomment>
        <translation>Suona %1</translation>
    </message>
    <message>
        <source>Octave %1</source>
        <translation>Ottava %1</translation>
    </message>
</context>
<context>
    <name>Tuner</name>
    <message>
        <source>Microphone Access Required</source>
        <translation>Accesso al microfono necessario</translation>
    </message>
    <message>
        <source>This app requires access to the microphone to work. Go to Settings -&gt; Privacy -&gt; Microphone and enable Veltra to give access.</source>
        <translation>Questa app ha bisogno di accedere al microfono per funzionare. Vai in Impostazioni → Privacy → Microfono e consenti l’accesso a Veltra.</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Chiudi</translation>
    </message>
    <message>
        <source>Detected %1 sound</source>
        <extracomment>%1 is the kind of sound heard: guitar, violin, piano or vocal.</extracomment>
        <translation>Rilevato suono di %1</translation>
    </message>
    <message>
        <source>Listening...</source>
        <translation>In ascolto…</translation>
    </message>
    <message>
        <source>Listening paused: no sound input</source>
        <translation>Ascolto in pausa: nessun ingresso audio</translation>
    </message>
</context>
<context>
    <name>TunerPage</name>
    <message>
        <source>Pitch graph</source>
        <translation>Grafico dell’altezza</translation>
    </message>
    <message>
        <source>Piano keyboard</source>
        <translation>Tastiera del pianoforte</translation>
    </message>
</context>
<context>
    <name>TuningSettings</name>
    <message>
        <source>Tuning System</source>
        <translation>Sistema di accordatura</translation>
    </message>
    <message>
        <source>Tonic</source>
        <translation>Tonica</translation>
    </message>
    <message>
        <source>Import Scala File…</source>
        <translation>Importa file Scala…</translation>
    </message>
    <message>
        <source>Path of a .scl file</source>
        <translation>Percorso di un file .scl</translation>
    </message>
    <message>
        <source>Instrument Key</source>
        <translation>Taglio dello strumento</translation>
    </message>
    <message>
        <source>Transposition</source>
        <translation>Trasposizione</translation>
    </message>
    <message>
        <source>C (concert)</source>
        <translation>Do (suono reale)</translation>
    </message>
    <message>
        <source>This scale cannot be used: %1</source>
        <extracomment>%1 is why, in English, as &quot;line 4: the pitches must rise from the tonic to the octave&quot;.</extracomment>
        <translation>Questa scala non può essere usata: %1</translation>
    </message>
    <message>
        <source>Equal temperament divides the octave into twelve equal semitones. A historical temperament or just intonation gives each note of the scale on the tonic its own pitch, and the tuner shows a note as in tune when it is in tune there; the reference A stays where it is. Import a Scala file (.scl) of twelve notes to tune to your own table.</source>
        <translation>Il temperamento equabile divide l’ottava in dodici semitoni uguali. Un temperamento storico o l’intonazione naturale dà a ogni nota della scala sulla tonica la sua altezza, e l’accordatore mostra una nota intonata quando lo è in quel sistema; il La di riferimento resta dov’è. Importa un file Scala (.scl) di dodici note per accordare secondo la tua tabella.</translation>
    </message>
    <message>
        <source>For transposing instruments: the tuner names the notes as they are written for an instrument in this key, and the tone buttons play the written notes. B♭ for clarinet and trumpet, E♭ for alto saxophone, F for horn; any other key as the semitones its written C sounds from concert C.</source>
        <translation>Per gli strumenti traspositori: l’accordatore nomina le note come sono scritte per uno strumento in questo taglio, e i pulsanti dei toni suonano le note scritte. Si♭ per clarinetto e tromba, Mi♭ per sax contralto, Fa per corno; ogni altro taglio come i semitoni tra il suo Do scritto e il Do reale.</translation>
    </message>
</context>
</TS>
