<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pt_BR">
<context>
    <name>DetectedSound</name>
    <message>
        <source>guitar</source>
        <translation>violão</translation>
    </message>
    <message>
        <source>violin</source>
        <translation>violino</translation>
    </message>
    <message>
        <source>piano</source>
        <translation>piano</translation>
    </message>
    <message>
        <source>vocal</source>
        <translation>voz</translation>
    </message>
</context>
<context>
    <name>FrequencyPage</name>
    <message>
        <source>Reference A4 in hertz</source>
        <translation>Diapasão A4 em hertz</translation>
    </message>
    <message>
        <source>Hz</source>
        <translation>Hz</translation>
    </message>
    <message>
        <source>Reset to 440 Hz</source>
        <translation>Voltar para 440 Hz</translation>
    </message>
    <message>
        <source>Stop Listening</source>
        <translation>Parar de ouvir</translation>
    </message>
    <message>
        <source>Listen for an A</source>
        <translation>Ouvir um lá</translation>
    </message>
</context>
<context>
    <name>Input</name>
    <message>
        <source>System default</source>
        <translation>Padrão do sistema</translation>
    </message>
    <message>
        <source>%1 (not connected)</source>
        <extracomment>%1 the chosen input&apos;s name on the sound server, which is not there now.</extracomment>
        <translation>%1 (não conectada)</translation>
    </message>
    <message>
        <source>The sound input the tuner listens to. While the chosen input is not connected, the tuner listens to the system default, and returns to the chosen one when it is back.</source>
        <translation>A entrada de som que o afinador ouve. Enquanto a entrada escolhida não estiver conectada, o afinador ouve a padrão do sistema e volta para a escolhida quando ela voltar.</translation>
    </message>
</context>
<context>
    <name>InputSection</name>
    <message>
        <source>Sound Input</source>
        <translation>Entrada de som</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Back</source>
        <translation>Voltar</translation>
    </message>
    <message>
        <source>Microphone access</source>
        <translation>Acesso ao microfone</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Configurações</translation>
    </message>
    <message>
        <source>Back (Esc)</source>
        <translation>Voltar (Esc)</translation>
    </message>
    <message>
        <source>Settings (Ctrl+,)</source>
        <translation>Configurações (Ctrl+,)</translation>
    </message>
    <message>
        <source>More options</source>
        <translation>Mais opções</translation>
    </message>
    <message>
        <source>Enjoying Veltra?</source>
        <translation>Está gostando do Veltra?</translation>
    </message>
    <message>
        <source>If Veltra helps you play in tune, a rating in your software centre helps other musicians find it.</source>
        <translation>Se o Veltra ajuda você a tocar afinado, uma avaliação na sua central de programas ajuda outros músicos a encontrá-lo.</translation>
    </message>
    <message>
        <source>Rate Veltra</source>
        <translation>Avaliar o Veltra</translation>
    </message>
    <message>
        <source>Not Now</source>
        <translation>Agora não</translation>
    </message>
</context>
<context>
    <name>Menu</name>
    <message>
        <source>Rate this App</source>
        <translation>Avaliar o aplicativo</translation>
    </message>
    <message>
        <source>More Apps</source>
        <translation>Mais aplicativos</translation>
    </message>
    <message>
        <source>Share this App</source>
        <translation>Compartilhar o aplicativo</translation>
    </message>
    <message>
        <source>Contact Us</source>
        <translation>Fale conosco</translation>
    </message>
    <message>
        <source>I&apos;ve been using this great instrument tuner app by %1 called Veltra for iOS. Check it out! #tuner #ios</source>
        <extracomment>What a user shares about the app; %1 is the makers&apos; social-media handle.</extracomment>
        <translation>Estou usando o Veltra, um ótimo afinador de instrumentos de %1 para iOS. Experimente! #tuner #ios</translation>
    </message>
    <message>
        <source>Email Unavailable</source>
        <translation>E-mail indisponível</translation>
    </message>
    <message>
        <source>You cannot send emails from this device.</source>
        <translation>Não é possível enviar e-mails deste dispositivo.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
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
        <translation>Frequência do A₄</translation>
    </message>
</context>
<context>
    <name>Readout</name>
    <message>
        <source>No note yet</source>
        <translation>Nenhuma nota ainda</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <extracomment>The frequency heard, as &quot;440.5 Hz&quot;.</extracomment>
        <translation>%1 Hz</translation>
    </message>
    <message>
        <source>%1 sharp</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;C sharp&quot;; %1 is its letter.</extracomment>
        <translation>%1 sustenido</translation>
    </message>
    <message>
        <source>%1 flat</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;B flat&quot;; %1 is its letter.</extracomment>
        <translation>%1 bemol</translation>
    </message>
    <message>
        <source>in tune</source>
        <translation>afinado</translation>
    </message>
    <message>
        <source>%1 cents flat</source>
        <extracomment>How far below the note the pitch is; %1 is a number of cents, as &quot;2.0&quot;.</extracomment>
        <translation>%1 cents abaixo</translation>
    </message>
    <message>
        <source>%1 cents sharp</source>
        <extracomment>How far above the note the pitch is; %1 is a number of cents, as &quot;2.0&quot;.</extracomment>
        <translation>%1 cents acima</translation>
    </message>
    <message>
        <source>%1 %2, %3, %4 hertz</source>
        <extracomment>The readout as a screen reader speaks it: %1 the note (&quot;A&quot;, &quot;C sharp&quot;), %2 its octave, %3 how far off it is (&quot;in tune&quot;, &quot;2.0 cents sharp&quot;), %4 the frequency (&quot;440.5&quot;).</extracomment>
        <translation>%1 %2, %3, %4 hertz</translation>
    </message>
    <message>
        <source>concert %1</source>
        <extracomment>Under a transposing instrument&apos;s written note, the concert note that sounds, as &quot;concert C4&quot;.</extracomment>
        <translation>som real %1</translation>
    </message>
    <message>
        <source>%1, concert %2 %3</source>
        <extracomment>The readout of a transposing instrument&apos;s written note, then the concert note that sounds: %1 the readout as above, %2 the concert note (&quot;C&quot;, &quot;B flat&quot;), %3 its octave.</extracomment>
        <translation>%1, som real %2 %3</translation>
    </message>
</context>
<context>
    <name>ReferenceCapture</name>
    <message>
        <source>Play an A and hold it for a second.</source>
        <translation>Toque um lá e segure por um segundo.</translation>
    </message>
    <message>
        <source>Reference A set to %1 Hz.</source>
        <extracomment>%1 the new reference in whole hertz (&quot;441&quot;).</extracomment>
        <translation>Lá de referência ajustado para %1 Hz.</translation>
    </message>
    <message>
        <source>The A heard is %1 Hz, outside 400 to 499 Hz: the reference stays.</source>
        <extracomment>%1 the A heard, in whole hertz (&quot;510&quot;); the reference is kept between 400 and 499 Hz.</extracomment>
        <translation>O lá ouvido está em %1 Hz, fora de 400 a 499 Hz: a referência continua a mesma.</translation>
    </message>
    <message>
        <source>That note is %1 cents from an A. Play an A and try again.</source>
        <extracomment>%1 how far the steady note was from the nearest A, in cents (&quot;98.0&quot;).</extracomment>
        <translation>Essa nota está a %1 cents de um lá. Toque um lá e tente de novo.</translation>
    </message>
    <message>
        <source>No steady A heard. Play an A and hold it for a second.</source>
        <translation>Nenhum lá estável ouvido. Toque um lá e segure por um segundo.</translation>
    </message>
</context>
<context>
    <name>ScalaImportButton</name>
    <message>
        <source>Choose a Scala File</source>
        <extracomment>The title of the file chooser that imports a scale.</extracomment>
        <translation>Escolher um arquivo Scala</translation>
    </message>
    <message>
        <source>Scala scales (*.scl)</source>
        <extracomment>The file chooser&apos;s filters: Scala&apos;s scale files, then every file.</extracomment>
        <translation>Escalas Scala (*.scl)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Todos os arquivos (*)</translation>
    </message>
</context>
<context>
    <name>ScreenSaver</name>
    <message>
        <source>Tuning</source>
        <translation>Afinando</translation>
    </message>
</context>
<context>
    <name>SelectSoundsPage</name>
    <message>
        <source>The readout follows the pitch only while one of the checked sounds is heard.</source>
        <translation>A leitura acompanha a altura só enquanto um dos sons marcados é ouvido.</translation>
    </message>
</context>
<context>
    <name>Settings</name>
    <message>
        <source>The frequency of the A above middle C to be used as the reference for tuning.</source>
        <translation>A frequência do A acima do dó central usada como referência para afinar (diapasão).</translation>
    </message>
    <message>
        <source>Display a sine tone generator in the main view.</source>
        <translation>Mostra um gerador de tons senoidais na tela principal.</translation>
    </message>
    <message>
        <source>When enabled, the screen turns green when in tune.</source>
        <translation>Quando ativado, a tela fica verde quando está afinado.</translation>
    </message>
    <message>
        <source>When enabled, only the enharmonic sharps are displayed.</source>
        <translation>Quando ativado, só os sustenidos enarmônicos são exibidos.</translation>
    </message>
    <message>
        <source>When enabled, the live graph is continuous. When disabled, the graph is plotted only when sound is detected, similar to the older versions of Veltra.</source>
        <translation>Quando ativado, o gráfico ao vivo é contínuo. Quando desativado, ele só é desenhado quando há som detectado, como nas versões antigas do Veltra.</translation>
    </message>
    <message>
        <source>The width of the center green bar that is considered in tune.</source>
        <translation>A largura da faixa verde central considerada afinada.</translation>
    </message>
    <message>
        <source>A lower latency works great when you need faster pitch detection (e.g. vocal practice). By using a higher latency, pitch detection will not respond to momentary unintended sounds and noise (ideal for instrument tuning).</source>
        <translation>Uma latência menor funciona bem quando você precisa de detecção de altura mais rápida (por ex., prática vocal). Com uma latência maior, a detecção não reage a sons momentâneos indesejados nem a ruídos (ideal para afinar instrumentos).</translation>
    </message>
    <message>
        <source>Highlights piano key corresponding to the current pitch.</source>
        <translation>Destaca a tecla de piano correspondente à altura atual.</translation>
    </message>
    <message>
        <source>Thickness of the line used in the live pitch graph.</source>
        <translation>Espessura da linha do gráfico de altura ao vivo.</translation>
    </message>
    <message>
        <source>This feature is very helpful for live situations where time needs to be kept track of.</source>
        <translation>Muito útil ao vivo, quando é preciso ficar de olho na hora.</translation>
    </message>
    <message>
        <source>Use machine learning to enable pitch detection only when certain instruments or vocal sounds are detected.</source>
        <translation>Usa aprendizado de máquina para detectar a altura só quando certos instrumentos ou a voz são ouvidos.</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <extracomment>The reference frequency in whole hertz, as &quot;440 Hz&quot;.</extracomment>
        <translation>%1 Hz</translation>
    </message>
    <message>
        <source>Selected Sounds: %1.</source>
        <extracomment>%1 is the list of the sounds chosen, as &quot;Guitar and Piano&quot;.</extracomment>
        <translation>Sons escolhidos: %1.</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Configurações</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>Reference A₄</source>
        <translation>Diapasão A₄</translation>
    </message>
    <message>
        <source>Tone Generator</source>
        <translation>Gerador de tons</translation>
    </message>
    <message>
        <source>Green Overlay</source>
        <translation>Tela verde</translation>
    </message>
    <message>
        <source>Sharps Only</source>
        <translation>Só sustenidos</translation>
    </message>
    <message>
        <source>Continuous Display</source>
        <translation>Exibição contínua</translation>
    </message>
    <message>
        <source>In-Tune Bar</source>
        <translation>Faixa de afinação</translation>
    </message>
    <message>
        <source>Wide ±15¢</source>
        <translation>Larga ±15¢</translation>
    </message>
    <message>
        <source>Medium ±10¢</source>
        <translation>Média ±10¢</translation>
    </message>
    <message>
        <source>Narrow ±5¢</source>
        <translation>Estreita ±5¢</translation>
    </message>
    <message>
        <source>Wide, 15 cents either side</source>
        <translation>Larga, 15 cents para cada lado</translation>
    </message>
    <message>
        <source>Medium, 10 cents either side</source>
        <translation>Média, 10 cents para cada lado</translation>
    </message>
    <message>
        <source>Narrow, 5 cents either side</source>
        <translation>Estreita, 5 cents para cada lado</translation>
    </message>
    <message>
        <source>Latency</source>
        <translation>Latência</translation>
    </message>
    <message>
        <source>%1 s</source>
        <extracomment>A time in seconds, as &quot;0.25 s&quot;.</extracomment>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>Fast</source>
        <translation>Rápida</translation>
    </message>
    <message>
        <source>Steady</source>
        <translation>Estável</translation>
    </message>
    <message>
        <source>Piano Keyboard</source>
        <translation>Teclado de piano</translation>
    </message>
    <message>
        <source>Line Thickness</source>
        <translation>Espessura da linha</translation>
    </message>
    <message>
        <source>Thin</source>
        <translation>Fina</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>Grossa</translation>
    </message>
    <message>
        <source>Clock</source>
        <translation>Relógio</translation>
    </message>
    <message>
        <source>Sound Classification</source>
        <translation>Classificação de sons</translation>
    </message>
    <message>
        <source>Select Sounds</source>
        <translation>Escolher sons</translation>
    </message>
</context>
<context>
    <name>ShareDialog</name>
    <message>
        <source>Share this App</source>
        <translation>Compartilhar o aplicativo</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fechar</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>Copiado</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copiar</translation>
    </message>
</context>
<context>
    <name>SoundList</name>
    <message>
        <source>Guitar</source>
        <translation>violão</translation>
    </message>
    <message>
        <source>Violin</source>
        <translation>violino</translation>
    </message>
    <message>
        <source>Piano</source>
        <translation>piano</translation>
    </message>
    <message>
        <source>Voice</source>
        <translation>voz</translation>
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
        <translation>Escolher sons</translation>
    </message>
    <message>
        <source>Guitar</source>
        <translation>Violão</translation>
    </message>
    <message>
        <source>Violin</source>
        <translation>Violino</translation>
    </message>
    <message>
        <source>Piano</source>
        <translation>Piano</translation>
    </message>
    <message>
        <source>Voice</source>
        <translation>Voz</translation>
    </message>
</context>
<context>
    <name>Temperament</name>
    <message>
        <source>Equal temperament</source>
        <translation>Temperamento igual</translation>
    </message>
    <message>
        <source>Pythagorean</source>
        <translation>Pitagórico</translation>
    </message>
    <message>
        <source>Quarter-comma meantone</source>
        <translation>Mesotônico de 1/4 de coma</translation>
    </message>
    <message>
        <source>Sixth-comma meantone</source>
        <translation>Mesotônico de 1/6 de coma</translation>
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
        <translation>Entonação justa (limite 5)</translation>
    </message>
    <message>
        <source>Imported scale</source>
        <translation>Escala importada</translation>
    </message>
</context>
<context>
    <name>ToneGenerator</name>
    <message>
        <source>%1 sharp</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;C sharp&quot;; %1 is its letter.</extracomment>
        <translation>%1 sustenido</translation>
    </message>
    <message>
        <source>%1 flat</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;B flat&quot;; %1 is its letter.</extracomment>
        <translation>%1 bemol</translation>
    </message>
    <message>
        <source>Play %1</source>
        <extracomment>A reference-tone button as a screen reader names it; %1 is the note, as &quot;C sharp&quot;.</extracomment>
        <translation>Tocar %1</translation>
    </message>
    <message>
        <source>Octave %1</source>
        <translation>Oitava %1</translation>
    </message>
</context>
<context>
    <name>Tuner</name>
    <message>
        <source>Microphone Access Required</source>
        <translation>Acesso ao microfone necessário</translation>
    </message>
    <message>
        <source>This app requires access to the microphone to work. Go to Settings -&gt; Privacy -&gt; Microphone and enable Veltra to give access.</source>
        <translation>Este aplicativo precisa de acesso ao microfone para funcionar. Vá em Configurações → Privacidade → Microfone e permita o acesso ao Veltra.</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Fechar</translation>
    </message>
    <message>
        <source>Detected %1 sound</source>
        <extracomment>%1 is the kind of sound heard: guitar, violin, piano or vocal.</extracomment>
        <translation>Som de %1 detectado</translation>
    </message>
    <message>
        <source>Listening...</source>
        <translation>Ouvindo…</translation>
    </message>
    <message>
        <source>Listening paused: no sound input</source>
        <translation>Escuta pausada: sem entrada de som</translation>
    </message>
</context>
<context>
    <name>TunerPage</name>
    <message>
        <source>Pitch graph</source>
        <translation>Gráfico de altura</translation>
    </message>
    <message>
        <source>Piano keyboard</source>
        <translation>Teclado de piano</translation>
    </message>
</context>
<context>
    <name>TuningSettings</name>
    <message>
        <source>Tuning System</source>
        <translation>Sistema de afinação</translation>
    </message>
    <message>
        <source>Tonic</source>
        <translation>Tônica</translation>
    </message>
    <message>
        <source>Import Scala File…</source>
        <translation>Importar arquivo Scala…</translation>
    </message>
    <message>
        <source>Path of a .scl file</source>
        <translation>Caminho de um arquivo .scl</translation>
    </message>
    <message>
        <source>Instrument Key</source>
        <translation>Tom do instrumento</translation>
    </message>
    <message>
        <source>Transposition</source>
        <translation>Transposição</translation>
    </message>
    <message>
        <source>C (concert)</source>
        <translation>Dó (som real)</translation>
    </message>
    <message>
        <source>This scale cannot be used: %1</source>
        <extracomment>%1 is why, in English, as &quot;line 4: the pitches must rise from the tonic to the octave&quot;.</extracomment>
        <translation>Esta escala não pode ser usada: %1</translation>
    </message>
    <message>
        <source>Equal temperament divides the octave into twelve equal semitones. A historical temperament or just intonation gives each note of the scale on the tonic its own pitch, and the tuner shows a note as in tune when it is in tune there; the reference A stays where it is. Import a Scala file (.scl) of twelve notes to tune to your own table.</source>
        <translation>O temperamento igual divide a oitava em doze semitons iguais. Um temperamento histórico ou a entonação justa dá a cada nota da escala sobre a tônica a sua própria altura, e o afinador mostra uma nota afinada quando ela está afinada nesse sistema; o Lá de referência fica onde está. Importe um arquivo Scala (.scl) de doze notas para afinar pela sua própria tabela.</translation>
    </message>
    <message>
        <source>For transposing instruments: the tuner names the notes as they are written for an instrument in this key, and the tone buttons play the written notes. B♭ for clarinet and trumpet, E♭ for alto saxophone, F for horn; any other key as the semitones its written C sounds from concert C.</source>
        <translation>Para instrumentos transpositores: o afinador nomeia as notas como são escritas para um instrumento neste tom, e os botões de tom tocam as notas escritas. Si♭ para clarinete e trompete, Mi♭ para saxofone alto, Fá para trompa; qualquer outro tom como os semitons entre o seu Dó escrito e o Dó real.</translation>
    </message>
</context>
</TS>
